#pragma once

#include <atomic>

namespace boardsim {

/// A lock that may be taken inside a signal handler: it neither allocates nor asks the thread library.
/// Whoever takes it must have all signals blocked, so that no handler of the same thread waits for itself.
class SpinLock {
public:
    constexpr SpinLock() = default;
    SpinLock(const SpinLock&) = delete;
    SpinLock& operator=(const SpinLock&) = delete;

    void lock() noexcept;
    void unlock() noexcept { taken_.clear(std::memory_order_release); }

private:
    std::atomic_flag taken_;
};

}  // namespace boardsim
