#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace boardsim {

/// Waits for descriptors and points in time and calls what belongs to them, all in one thread.
class EventLoop {
public:
    using Clock = std::chrono::steady_clock;
    using Handler = std::function<void()>;
    /// Says when a timer is next to fire; nothing while it rests.
    using Due = std::function<std::optional<Clock::time_point>()>;

    /// Calls `handler` when `descriptor` is readable or at its end. Watched descriptors are served in the
    /// order of their registration. The descriptor stays the caller's.
    void watch(int descriptor, Handler handler);
    void unwatch(int descriptor);

    /// Calls `handler` when the time that `due` names has come; `due` is asked again before every wait.
    void addTimer(Due due, Handler handler);

    /// Runs until stop(). @throws what handlers throw; std::system_error when poll() fails.
    void run();
    void stop() { running_ = false; }

private:
    struct Watch {
        int descriptor;
        Handler handler;
    };
    struct Timer {
        Due due;
        Handler handler;
    };

    int untilNextTimer() const;
    void fireTimers();
    void serveDescriptors(int timeoutMs);

    std::vector<Watch> watches_;
    std::vector<Timer> timers_;
    bool running_ = false;
};

}  // namespace boardsim
