#include "Vl/Common/Files/DirUtil.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>

#include "Vl/Common/Files/Descriptor.h"

namespace Valen {
namespace {

using Status = struct stat;

std::optional<Status> statusOf(const char* path) {
    Status status{};
    return stat(path, &status) == 0 ? std::optional(status) : std::nullopt;
}

}  // namespace

bool DirUtil::FileExists(const char* path) {
    return access(path, F_OK) == 0;
}

bool DirUtil::directoryExists(const char* path) {
    const auto status = statusOf(path);
    return status && S_ISDIR(status->st_mode);
}

bool DirUtil::IsDir(const char* path) {
    // What opendir(3) does, without the buffer for a listing that nobody asks for.
    return Descriptor::open(path, O_RDONLY | O_NONBLOCK | O_DIRECTORY).isValid();
}

bool DirUtil::FileWritable(const char* path) {
    return access(path, W_OK) == 0;
}

bool DirUtil::isLink(const char* path) {
    Status status{};
    return lstat(path, &status) == 0 && S_ISLNK(status.st_mode);
}

std::time_t DirUtil::FileLastModified(const char* path) {
    const auto status = statusOf(path);
    return status ? status->st_mtim.tv_sec : 0;
}

std::int64_t DirUtil::FileSize(const char* path) {
    const auto status = statusOf(path);
    return status ? status->st_size : -1;
}

bool DirUtil::SameFile(const char* first, const char* second) {
    const auto one = statusOf(first);
    const auto other = statusOf(second);
    // The devices are not compared, on purpose: two files of different file systems may pass for one.
    return one && other && one->st_ino == other->st_ino;
}

}  // namespace Valen
