#include "Vl/Common/Files/DirectoryReader.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace Valen {

DirectoryReader::DirectoryReader(const char* path) : directory_(opendir(path)), failed_(!directory_) {}

const char* DirectoryReader::next() {
    if (!directory_) {
        return nullptr;
    }
    errno = 0;  // the end and a failure differ in nothing else
    entry_ = readdir(directory_.get());
    if (entry_ == nullptr) {
        failed_ = errno != 0;
        return nullptr;
    }
    return entry_->d_name;
}

std::optional<bool> DirectoryReader::isDirectory() const {
    // The type comes with the listing: only symbolic links cost a system call here.
    if (entry_->d_type != DT_LNK && entry_->d_type != DT_UNKNOWN) {
        return entry_->d_type == DT_DIR;
    }
    struct stat status {};
    if (fstatat(dirfd(directory_.get()), entry_->d_name, &status, 0) == 0) {
        return S_ISDIR(status.st_mode);
    }
    return errno == ENOENT || errno == ENOTDIR ? std::optional(false) : std::nullopt;
}

}  // namespace Valen
