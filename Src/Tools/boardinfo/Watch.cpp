#include "Tools/boardinfo/Watch.h"

#include <algorithm>
#include <cerrno>
#include <ctime>

namespace boardinfo {
namespace {

timespec timespecOf(std::chrono::nanoseconds time) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
    return {seconds.count(), (time - seconds).count()};
}

}  // namespace

Watch::Watch(std::chrono::milliseconds interval) : interval_(interval) {
    sigemptyset(&ending_);
    sigaddset(&ending_, SIGINT);
    sigaddset(&ending_, SIGTERM);
    sigprocmask(SIG_BLOCK, &ending_, nullptr);
}

bool Watch::waitForNext() {
    due_ = std::max(due_ + interval_, Clock::now());
    int received = 0;
    do {
        const auto left = std::max<std::chrono::nanoseconds>(due_ - Clock::now(), {});
        const timespec timeout = timespecOf(left);
        received = sigtimedwait(&ending_, nullptr, &timeout);
    } while (received < 0 && errno == EINTR);
    return received < 0;
}

}  // namespace boardinfo
