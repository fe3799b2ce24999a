#pragma once

#include <pthread.h>

#include <cstdint>
#include <ctime>

#include "Vl/Common/Threads/Mutex.h"

namespace Valen {

/// What threads sleep on and are woken by: a word of bits that one thread sets and another waits for.
///
/// The upper 32 bits are the signal bits; the event is signalled while any of them is set. Any number of
/// threads may set and wait at the same time. Every wait counts as a ThreadInIO, so a thread that sleeps here
/// is never taken for a dead one. Deadlines are readings of the monotonic clock.
class Event {
public:
    using Bits = std::uint64_t;

    /// What Set() sets.
    static constexpr Bits kSet = Bits{1} << 62;
    /// The event is being destroyed; wakes its waiters and is never returned to one.
    static constexpr Bits kDestroyed = Bits{1} << 63;

    /// `signalled`: begin with kSet.
    explicit Event(bool signalled);
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    /// Wakes whoever still waits and returns when the last of them has left.
    ~Event();

    /// Signals the event and wakes all its waiters.
    void Set() { SetBits(kSet); }
    /// Adds signal bits to those that are set and wakes all waiters. Only bits 32 to 62 can be set; others
    /// are ignored, for they would signal nothing or the end.
    void SetBits(Bits bits);
    /// Forgets what was signalled.
    void Clear();

    /// Blocks until the event is signalled or the absolute `deadline` has passed; without one, as long as it
    /// takes. With `clear` all bits are forgotten on return, signalled or not.
    /// @return the bits, 0 when it is not signalled. A deadline that is none (nanoseconds out of range) ends
    /// the wait at once with a bug report.
    Bits WaitTimeout(const timespec* deadline, bool clear);
    /// As above, `milliseconds` from now; 0 and less only look. @return whether it was signalled.
    bool WaitTimeout(int milliseconds, bool clear);
    Bits WaitTimeoutBits(int milliseconds, bool clear);
    /// Blocks until the event is signalled. @return true, but for an event that was destroyed meanwhile.
    bool Wait(bool clear);

private:
    bool isSignalled() const;
    int waitForSignal(const timespec* deadline);

    Mutex mutex_;
    pthread_cond_t changed_;
    Bits bits_;
    int waiters_ = 0;
};

}  // namespace Valen
