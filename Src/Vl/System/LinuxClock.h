#pragma once

#include <ctime>

namespace Valen::system::clock {

/// The clocks of the system.
enum ClockType : int {
    Monotonic = 0,      ///< CLOCK_MONOTONIC: since start-up, never set
    Realtime = 1,       ///< CLOCK_REALTIME: wall clock
    ThreadCpuTime = 2,  ///< CLOCK_THREAD_CPUTIME_ID: what the calling thread has used
};

/// The Linux clock of each type (clock_gettime(2)). Any thread may use it; nothing blocks. A type outside the
/// enumeration is a programming error and ends the process with a failed assertion, in every build.
class LinuxClock {
public:
    /// The kernel's number of the clock, for pthread_condattr_setclock and the like.
    static clockid_t getSysType(ClockType type);
    static timespec getTime(ClockType type = Monotonic);
    /// Sets the wall clock. @return false when the kernel refuses, with errno set.
    static bool setTime(const timespec& time);
    /// The moment `milliseconds` from now, for waits with a deadline; negative is in the past.
    static timespec GetAbsoluteTime(int milliseconds, ClockType type = Monotonic);
};

}  // namespace Valen::system::clock
