#include "Tests/HAL/Panel/ScreenCalls.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace {

ScreenCalls* watcher = nullptr;

bool isWatched(int descriptor) {
    if (watcher == nullptr) {
        return false;
    }
    std::error_code none;
    const auto path = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), none);
    return path.filename() == "screen";
}

}  // namespace

ScreenCalls::ScreenCalls() {
    watcher = this;
}

ScreenCalls::~ScreenCalls() {
    watcher = nullptr;
}

extern "C" off_t lseek(int descriptor, off_t offset, int whence) noexcept {
    if (isWatched(descriptor)) {
        watcher->calls.push_back("lseek " + std::to_string(offset));
    }
    return syscall(SYS_lseek, descriptor, offset, whence);
}

extern "C" ssize_t write(int descriptor, const void* bytes, size_t size) {
    if (isWatched(descriptor)) {
        watcher->calls.push_back("write " + std::to_string(size));
        if (watcher->writeAnswer) {
            errno = EINTR;
            return *watcher->writeAnswer;
        }
        size = std::min(size, watcher->writeLimit);
    }
    return syscall(SYS_write, descriptor, bytes, size);
}
