#pragma once

#include <chrono>
#include <vector>

/// The monotonic clock and the sleeps of the code under test while it lives: time passes only in sleeps,
/// which are recorded. The test program is linked with --wrap=clock_gettime and --wrap=nanosleep. One at a
/// time.
class SimulatedTime {
public:
    SimulatedTime();
    SimulatedTime(const SimulatedTime&) = delete;
    SimulatedTime& operator=(const SimulatedTime&) = delete;
    ~SimulatedTime();

    std::chrono::nanoseconds elapsed{0};
    /// How much longer than asked for every sleep lasts.
    std::chrono::nanoseconds oversleep{0};
    std::vector<std::chrono::nanoseconds> sleeps;
};
