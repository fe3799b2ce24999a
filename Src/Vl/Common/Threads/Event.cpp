#include "Vl/Common/Threads/Event.h"

#include <cerrno>
#include <mutex>

#include "Vl/Common/Log/BugReport.h"
#include "Vl/Common/Threads/ThreadInIO.h"
#include "Vl/System/LinuxClock.h"

namespace Valen {
namespace {

using system::clock::LinuxClock;

constexpr auto kClock = system::clock::Monotonic;
constexpr Event::Bits kSignalBits = Event::Bits{0xFFFF'FFFF} << 32;

}  // namespace

Event::Event(bool signalled) : bits_(signalled ? kSet : 0) {
    pthread_condattr_t attributes;
    pthread_condattr_init(&attributes);
    pthread_condattr_setclock(&attributes, LinuxClock::getSysType(kClock));
    pthread_cond_init(&changed_, &attributes);
    pthread_condattr_destroy(&attributes);
}

Event::~Event() {
    {
        const std::lock_guard lock(mutex_);
        // A waiter that leaves takes the bit with it, so it is set again for those that remain.
        while (waiters_ > 0) {
            bits_ |= kDestroyed;
            pthread_cond_broadcast(&changed_);
            pthread_cond_wait(&changed_, mutex_.native());
        }
    }
    pthread_cond_destroy(&changed_);
}

void Event::SetBits(Bits bits) {
    const std::lock_guard lock(mutex_);
    bits_ |= bits & kSignalBits & ~kDestroyed;
    pthread_cond_broadcast(&changed_);
}

void Event::Clear() {
    const std::lock_guard lock(mutex_);
    bits_ = 0;
    pthread_cond_broadcast(&changed_);
}

Event::Bits Event::WaitTimeout(const timespec* deadline, bool clear) {
    const std::lock_guard lock(mutex_);
    ++waiters_;
    while (!isSignalled()) {
        const int error = waitForSignal(deadline);
        if (error == 0) {
            continue;
        }
        if (error != ETIMEDOUT) {
            report_bug(true, "timed wait cond error: %d", error);
        }
        break;
    }
    --waiters_;
    if ((bits_ & kDestroyed) != 0) {
        bits_ &= ~kDestroyed;
        pthread_cond_broadcast(&changed_);
    }
    const Bits bits = bits_;
    if (clear) {
        bits_ = 0;
    }
    return bits;
}

bool Event::WaitTimeout(int milliseconds, bool clear) {
    return (WaitTimeoutBits(milliseconds, clear) & kSignalBits) != 0;
}

Event::Bits Event::WaitTimeoutBits(int milliseconds, bool clear) {
    const timespec deadline = LinuxClock::GetAbsoluteTime(milliseconds, kClock);
    return WaitTimeout(&deadline, clear);
}

bool Event::Wait(bool clear) {
    return (WaitTimeout(nullptr, clear) & kSignalBits) != 0;
}

bool Event::isSignalled() const {
    return (bits_ & kSignalBits) != 0;
}

int Event::waitForSignal(const timespec* deadline) {
    const ThreadInIO blocksOnPurpose;
    return deadline != nullptr ? pthread_cond_timedwait(&changed_, mutex_.native(), deadline)
                               : pthread_cond_wait(&changed_, mutex_.native());
}

}  // namespace Valen
