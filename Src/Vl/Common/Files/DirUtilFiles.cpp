// DirUtil: small file operations.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/DirUtil.h"
#include "Vl/Common/Files/Errno.h"
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/Common/Strings/SimpleString.h"

namespace Valen {
namespace {

namespace fs = std::filesystem;

/// The path of `name` with every link on the way to it resolved, so that ".." leads back the same way; `name`
/// itself may be a link.
fs::path resolveParents(fs::path name, std::error_code& error) {
    if (!name.has_filename()) {
        name = name.parent_path();  // a slash at the end
    }
    const fs::path parent = fs::absolute(name, error).parent_path();
    return error ? fs::path() : fs::weakly_canonical(parent, error) / name.filename();
}

void linkRelatively(const char* target, const char* link, std::error_code& error) {
    const fs::path to = resolveParents(target, error);
    const fs::path from = error ? fs::path() : resolveParents(link, error);
    if (!error) {
        fs::create_symlink(to.lexically_relative(from.parent_path()), link, error);
    }
}

}  // namespace

int DirUtil::FileRename(const char* from, const char* to) {
    return std::rename(from, to);
}

bool DirUtil::FileDelete(const char* path) {
    if (std::remove(path) != 0) {
        VL_LOG(Firmware, DEBUG, "could not delete %s", path);
        return false;
    }
    return true;
}

bool DirUtil::EnsureFileExists(const char* path) {
    if (FileExists(path)) {
        return true;
    }
    return Descriptor(::open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0600)).isValid();  // NOLINT: variadic
}

int DirUtil::fSync(const char* path) {
    Descriptor file = Descriptor::open(path, O_RDONLY);
    if (!file.isValid()) {
        return file.get();
    }
    fdatasync(file.get());  // what is reported is the close, on purpose
    return file.close();
}

bool DirUtil::ReadLink(const char* path, SimpleString& target) {
    struct stat status {};
    if (lstat(path, &status) != 0 || !S_ISLNK(status.st_mode)) {
        return false;
    }
    const auto expected = static_cast<std::size_t>(status.st_size);
    std::string text(expected + 1, '\0');  // room for a byte more shows a link that has grown meanwhile
    const ssize_t length = readlink(path, text.data(), text.size());
    if (length != status.st_size) {
        VL_LOG(Firmware, DEBUG, "readlink did not return %d", static_cast<int>(expected));
        return false;
    }
    target = text.c_str();
    return true;
}

bool DirUtil::RelativeSymlink(const char* target, const char* link) {
    std::error_code error;
    linkRelatively(target, link, error);
    if (error) {
        VL_LOG(Firmware, DEBUG, "could not link %s to %s: %s", link, target, errnoText(error.value()));
    }
    return !error;
}

}  // namespace Valen
