#pragma once

#include <chrono>
#include <thread>

#include "Vl/Common/Threads/ThreadInIO.h"

namespace Valen::HAL {

/// Sleeps, as a wait on purpose, for which the watchdog leaves the thread alone.
inline void pauseFor(std::chrono::milliseconds time) {
    const ThreadInIO blocksOnPurpose;
    std::this_thread::sleep_for(time);
}

}  // namespace Valen::HAL
