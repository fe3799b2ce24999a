#pragma once

#include <chrono>
#include <csignal>

namespace boardinfo {

/// Paces reports until the user ends them. From construction on SIGINT and SIGTERM do not end the process any
/// more, they end the waiting; made before there are threads, which inherit that.
class Watch {
public:
    explicit Watch(std::chrono::milliseconds interval);

    /// Waits until the next report is due: the interval behind the one before, or now when that has passed.
    /// @return false when it is time to end.
    bool waitForNext();

private:
    using Clock = std::chrono::steady_clock;

    std::chrono::milliseconds interval_;
    Clock::time_point due_ = Clock::now();
    sigset_t ending_{};
};

}  // namespace boardinfo
