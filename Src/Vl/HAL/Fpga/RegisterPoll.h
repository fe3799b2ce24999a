#pragma once

#include <chrono>
#include <cstdint>
#include <thread>

#include "Vl/System/LinuxClock.h"

namespace Valen::HAL {

/// How a wait for a register ended: the value read last, and whether it was the awaited one.
struct PollResult {
    bool clear;
    std::uint32_t value;
};

/// The monotonic clock.
inline std::chrono::nanoseconds monotonicTime() {
    const timespec now = system::clock::LinuxClock::getTime(system::clock::Monotonic);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

/// Reads a register with `read` until none of the bits in `mask` is set, for at most `longest`, sleeping 5 µs
/// between reads. The last read comes after that time, so that a thread which slept through it does not miss
/// what the hardware did meanwhile.
template <typename Read>
PollResult pollUntilClear(Read read, std::uint32_t mask, std::chrono::nanoseconds longest) {
    constexpr std::chrono::microseconds kPause(5);
    const std::chrono::nanoseconds end = monotonicTime() + longest;
    while (true) {
        const bool isLast = monotonicTime() >= end;
        const std::uint32_t value = read();
        const bool isClear = (value & mask) == 0;
        if (isClear || isLast) {
            return {isClear, value};
        }
        std::this_thread::sleep_for(kPause);
    }
}

}  // namespace Valen::HAL
