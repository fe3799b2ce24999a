// DirUtil: single files, copied and read.
#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Files/Errno.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/Common/Log/LogInterface.h"

namespace Valen {
namespace {

bool copyContents(int from, int to) {
    std::array<char, 1024> block;
    for (;;) {
        const ssize_t count = readExact(from, std::as_writable_bytes(std::span(block)));
        if (count < 0 || !writeExact(to, {block.data(), static_cast<std::size_t>(count)})) {
            return false;
        }
        if (static_cast<std::size_t>(count) < block.size()) {
            return true;
        }
    }
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
struct Free {
    void operator()(unsigned char* block) const { std::free(block); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;
using Block = std::unique_ptr<unsigned char, Free>;

/// -1 when the file has no end to seek.
off_t sizeOf(std::FILE* file) {
    const off_t size = fseeko(file, 0, SEEK_END) == 0 ? ftello(file) : -1;
    return fseeko(file, 0, SEEK_SET) == 0 ? size : -1;
}

}  // namespace

bool DirUtil::Copy(const char* from, const char* to) {
    if (SameFile(from, to)) {
        VL_LOG(Firmware, DEBUG, "%s & %s are the same file", from, to);
        return false;
    }
    const Descriptor source = Descriptor::open(from, O_RDONLY);
    if (!source.isValid()) {
        VL_LOG(Firmware, DEBUG, "could not open f1 %s", from);
        return false;
    }
    struct stat status {};
    if (fstat(source.get(), &status) != 0) {
        VL_LOG(Firmware, DEBUG, "fstat failed for %s", from);
        return false;
    }
    // Nobody else reads it before it has its mode.
    const Descriptor copy(::open(to, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));  // NOLINT: variadic
    if (!copy.isValid()) {
        VL_LOG(Firmware, DEBUG, "could not open f2 %s", to);
        return false;
    }
    if (!copyContents(source.get(), copy.get())) {
        VL_LOG(Firmware, DEBUG, "could not write enough bytes");
        return false;
    }
    if (fchmod(copy.get(), status.st_mode & 07777) != 0) {
        VL_LOG(Firmware, DEBUG, "could not chmod: %s", errnoText());
        return false;
    }
    return true;
}

bool DirUtil::readFileToBuffer(const std::string& path, unsigned char** buffer, unsigned int* size) {
    if (buffer == nullptr || size == nullptr) {
        VL_LOG(Firmware, ERROR, "Parameters incorrect.");
        return false;
    }
    const File file(std::fopen(path.c_str(), "rbe"));
    if (!file) {
        VL_LOG(Firmware, NOTICE, "Failed to open the file %s for reading.", path.c_str());
        return false;
    }
    const off_t length = sizeOf(file.get());
    if (length < 0) {
        VL_LOG(Firmware, ERROR, "Error reading data from the file %s.", path.c_str());
        return false;
    }
    if (length == 0) {
        VL_LOG(Firmware, ERROR, "The file %s contains no data.", path.c_str());
        return false;
    }
    const auto wanted = static_cast<std::size_t>(length);
    // A size that the caller's variable cannot hold gets no buffer.
    Block block(wanted <= UINT_MAX ? static_cast<unsigned char*>(std::malloc(wanted)) : nullptr);
    if (!block) {
        VL_LOG(Firmware, ERROR, "Error allocating the buffer.");
        return false;
    }
    if (std::fread(block.get(), 1, wanted, file.get()) != wanted) {
        VL_LOG(Firmware, ERROR, "Error reading data from the file %s.", path.c_str());
        return false;
    }
    *buffer = block.release();
    *size = static_cast<unsigned int>(wanted);
    return true;
}

}  // namespace Valen
