#include "Tools/boardsim/Host/EventLoop.h"

#include <poll.h>

#include <algorithm>

#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {

void EventLoop::watch(int descriptor, Handler handler) {
    watches_.push_back({descriptor, std::move(handler)});
}

void EventLoop::unwatch(int descriptor) {
    std::erase_if(watches_, [&](const Watch& watch) { return watch.descriptor == descriptor; });
}

void EventLoop::addTimer(Due due, Handler handler) {
    timers_.push_back({std::move(due), std::move(handler)});
}

void EventLoop::run() {
    running_ = true;
    while (running_) {
        serveDescriptors(untilNextTimer());
        fireTimers();
    }
}

int EventLoop::untilNextTimer() const {
    using std::chrono::milliseconds;
    // Longer waits are cut: poll() counts in an int.
    constexpr milliseconds kLongest{1'000'000};
    std::optional<milliseconds> shortest;
    const Clock::time_point now = Clock::now();
    for (const Timer& timer : timers_) {
        if (const auto when = timer.due()) {
            const auto wait =
                std::chrono::ceil<milliseconds>(std::min<Clock::duration>(*when - now, kLongest));
            shortest = std::min(shortest.value_or(kLongest), std::max(wait, milliseconds{0}));
        }
    }
    return shortest ? static_cast<int>(shortest->count()) : -1;
}

void EventLoop::fireTimers() {
    for (const Timer& timer : timers_) {
        const auto when = timer.due();
        if (when && Clock::now() >= *when) {
            timer.handler();
        }
    }
}

void EventLoop::serveDescriptors(int timeoutMs) {
    std::vector<pollfd> events;
    for (const Watch& watch : watches_) {
        events.push_back({watch.descriptor, POLLIN, 0});
    }
    if (poll(events.data(), events.size(), timeoutMs) < 0) {
        if (errno == EINTR) {
            return;
        }
        throw systemError("cannot wait for the board");
    }
    for (const pollfd& event : events) {
        if (event.revents == 0) {
            continue;
        }
        // A handler may have removed this watch or added others.
        const auto watch = std::find_if(watches_.begin(), watches_.end(),
                                        [&](const Watch& w) { return w.descriptor == event.fd; });
        if (watch != watches_.end()) {
            const Handler handler = watch->handler;
            handler();
        }
    }
}

}  // namespace boardsim
