#include "Tools/overlayview/Files.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

namespace overlayview {
namespace {

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

std::system_error failure(int error, const std::string& path) {
    return {error, std::generic_category(), path};
}

File openFile(const std::string& path, const char* mode) {
    File file(std::fopen(path.c_str(), mode));
    if (!file) {
        throw failure(errno, path);
    }
    return file;
}

}  // namespace

std::vector<std::byte> readFile(const std::string& path) {
    const File file = openFile(path, "rbe");
    std::vector<std::byte> bytes;
    std::array<std::byte, 65536> part{};
    while (const std::size_t count = std::fread(part.data(), 1, part.size(), file.get())) {
        bytes.insert(bytes.end(), part.begin(), part.begin() + static_cast<std::ptrdiff_t>(count));
        if (bytes.size() > kMostFileBytes) {
            throw failure(EFBIG, path);
        }
    }
    if (std::ferror(file.get()) != 0) {
        throw failure(errno, path);
    }
    return bytes;
}

void writeFile(const std::string& path, Bytes bytes) {
    const File opened = path == "-" ? File() : openFile(path, "wbe");
    std::FILE* file = opened ? opened.get() : stdout;
    // No bytes are no array for fwrite(). What is lost while closing must be known, hence the flush.
    const std::size_t written = bytes.empty() ? 0 : std::fwrite(bytes.data(), 1, bytes.size(), file);
    if (written != bytes.size() || std::fflush(file) != 0) {
        throw failure(errno, opened ? path : "standard output");
    }
}

}  // namespace overlayview
