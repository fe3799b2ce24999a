#include "Vl/System/LinuxClock.h"

// The assertions below hold in every build: a wrong clock must not go on as a right one.
#undef NDEBUG
#include <cassert>

namespace Valen::system::clock {

clockid_t LinuxClock::getSysType(ClockType type) {
    switch (type) {
        case Monotonic:
            return CLOCK_MONOTONIC;
        case Realtime:
            return CLOCK_REALTIME;
        case ThreadCpuTime:
            return CLOCK_THREAD_CPUTIME_ID;
    }
    assert(false && "Invalid clock type");
    __builtin_unreachable();
}

timespec LinuxClock::getTime(ClockType type) {
    timespec now{};
    const int rval = clock_gettime(getSysType(type), &now);
    assert(rval == 0 && "clock_gettime failed");
    return now;
}

bool LinuxClock::setTime(const timespec& time) {
    return clock_settime(CLOCK_REALTIME, &time) == 0;
}

timespec LinuxClock::GetAbsoluteTime(int milliseconds, ClockType type) {
    constexpr long kNanosecondsASecond = 1'000'000'000;
    timespec moment = getTime(type);
    moment.tv_sec += milliseconds / 1000;
    moment.tv_nsec += milliseconds % 1000 * 1'000'000L;
    if (moment.tv_nsec >= kNanosecondsASecond) {
        moment.tv_nsec -= kNanosecondsASecond;
        ++moment.tv_sec;
    } else if (moment.tv_nsec < 0) {
        moment.tv_nsec += kNanosecondsASecond;
        --moment.tv_sec;
    }
    return moment;
}

}  // namespace Valen::system::clock
