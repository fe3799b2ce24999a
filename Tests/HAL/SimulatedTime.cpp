#include "Tests/HAL/SimulatedTime.h"

#include <ctime>

namespace {

SimulatedTime* simulation = nullptr;

}  // namespace

SimulatedTime::SimulatedTime() {
    simulation = this;
}

SimulatedTime::~SimulatedTime() {
    simulation = nullptr;
}

// Which names these are is the linker's choice.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" int __real_clock_gettime(clockid_t clock, timespec* time);
extern "C" int __real_nanosleep(const timespec* wanted, timespec* left);

extern "C" int __wrap_clock_gettime(clockid_t clock, timespec* time) {
    if (simulation == nullptr || clock != CLOCK_MONOTONIC) {
        return __real_clock_gettime(clock, time);
    }
    constexpr std::chrono::seconds kStart(1000);
    const std::chrono::nanoseconds now = kStart + simulation->elapsed;
    time->tv_sec = static_cast<time_t>(now.count() / 1'000'000'000);
    time->tv_nsec = static_cast<long>(now.count() % 1'000'000'000);
    return 0;
}

extern "C" int __wrap_nanosleep(const timespec* wanted, timespec* left) {
    if (simulation == nullptr) {
        return __real_nanosleep(wanted, left);
    }
    const auto sleep = std::chrono::seconds(wanted->tv_sec) + std::chrono::nanoseconds(wanted->tv_nsec);
    simulation->sleeps.push_back(sleep);
    simulation->elapsed += sleep + simulation->oversleep;
    return 0;
}
// NOLINTEND(bugprone-reserved-identifier)
