#include "Tests/Support/FileFaults.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

namespace support {
namespace {

std::atomic<FileFaults*> current = nullptr;

/// The faults that concern an open file, null when there are none.
FileFaults* faultsOf(int descriptor) {
    FileFaults* const faults = current;
    if (faults == nullptr) {
        return nullptr;
    }
    std::error_code none;
    const auto path = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), none);
    return faults->concerns(path.native()) ? faults : nullptr;
}

int fail(int error) {
    errno = error;
    return -1;
}

/// The next row of a script: at most so many bytes, or an error.
int next(std::deque<int>& script, std::size_t wanted) {
    if (script.empty()) {
        return static_cast<int>(wanted);
    }
    const int answer = script.front();
    script.pop_front();
    return std::min(answer, static_cast<int>(wanted));
}

}  // namespace

FileFaults::FileFaults(std::string pathPrefix) : pathPrefix_(std::move(pathPrefix)) {
    current = this;
}

FileFaults::~FileFaults() {
    current = nullptr;
}

void FileFaults::waitForReads(int count) {
    std::unique_lock lock(mutex);
    counted_.wait(lock, [this, count] { return readCount_ >= count; });
}

int FileFaults::readCount() {
    const std::lock_guard lock(mutex);
    return readCount_;
}

void FileFaults::countRead() {
    {
        const std::lock_guard lock(mutex);
        ++readCount_;
    }
    counted_.notify_all();
}

}  // namespace support

// The linker sends the library's calls to __wrap_…, and ours to __real_… to the system.
extern "C" {

int __real_open(const char* path, int flags, ...);
ssize_t __real_read(int descriptor, void* bytes, std::size_t count);
ssize_t __real_write(int descriptor, const void* bytes, std::size_t count);
off_t __real_lseek(int descriptor, off_t offset, int whence);
int __real_nanosleep(const timespec* time, timespec* rest);

int __wrap_open(const char* path, int flags, ...) {
    va_list list;
    va_start(list, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(list, mode_t) : mode_t{0};
    va_end(list);
    support::FileFaults* const faults = support::current;
    if (faults != nullptr && faults->concerns(path)) {
        const std::lock_guard lock(faults->mutex);
        if (faults->isOff()) {
            return support::fail(ENODEV);
        }
        if (faults->keepsContents) {
            flags &= ~O_TRUNC;
        }
    }
    return __real_open(path, flags, mode);
}

ssize_t __wrap_read(int descriptor, void* bytes, std::size_t count) {
    support::FileFaults* const faults = support::faultsOf(descriptor);
    if (faults == nullptr) {
        return __real_read(descriptor, bytes, count);
    }
    if (faults->beforeRead) {
        faults->beforeRead();
    }
    int answer = 0;
    {
        const std::lock_guard lock(faults->mutex);
        answer = faults->isOff() ? -ENODEV : support::next(faults->reads, count);
    }
    const ssize_t moved = answer < 0 ? support::fail(-answer)
                                     : __real_read(descriptor, bytes, static_cast<std::size_t>(answer));
    faults->countRead();
    return moved;
}

ssize_t __wrap_write(int descriptor, const void* bytes, std::size_t count) {
    support::FileFaults* const faults = support::faultsOf(descriptor);
    if (faults == nullptr) {
        return __real_write(descriptor, bytes, count);
    }
    const std::lock_guard lock(faults->mutex);
    int answer = faults->isOff() ? -ENODEV : support::next(faults->writes, count);
    if (answer < 0) {
        return support::fail(-answer);
    }
    if (faults->bytesUntilPowerOff > 0) {
        answer = static_cast<int>(std::min<long>(answer, faults->bytesUntilPowerOff));
        faults->bytesUntilPowerOff -= answer;
    }
    return __real_write(descriptor, bytes, static_cast<std::size_t>(answer));
}

off_t __wrap_lseek(int descriptor, off_t offset, int whence) {
    support::FileFaults* const faults = support::faultsOf(descriptor);
    return faults != nullptr && faults->isOff() ? support::fail(ENODEV)
                                                : __real_lseek(descriptor, offset, whence);
}

int __wrap_nanosleep(const timespec* time, timespec* rest) {
    support::FileFaults* const faults = support::current;
    if (faults == nullptr) {
        return __real_nanosleep(time, rest);
    }
    {
        const std::lock_guard lock(faults->mutex);
        faults->sleeps.emplace_back(time->tv_sec * 1000 + time->tv_nsec / 1'000'000);
    }
    if (faults->onSleep) {
        faults->onSleep();
    }
    return 0;
}

}  // extern "C"
