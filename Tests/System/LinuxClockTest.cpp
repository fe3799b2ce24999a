#include "Vl/System/LinuxClock.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <optional>

namespace {

using Valen::system::clock::ClockType;
using Valen::system::clock::LinuxClock;

constexpr auto kMonotonic = static_cast<ClockType>(0);
constexpr auto kRealtime = static_cast<ClockType>(1);
constexpr auto kThreadCpu = static_cast<ClockType>(2);

long long nanoseconds(const timespec& time) {
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

struct Setting {
    clockid_t clock;
    timespec time;
};

/// What the system answers when the clock asks it, and what it was told.
struct {
    bool cannotBeRead = false;
    int settingError = 0;
    std::optional<Setting> setting;
} theSystem;

}  // namespace

// The linker leads every call of the two functions here and names the library's own __real.
extern "C" {
int __real_clock_gettime(clockid_t clock, timespec* time);

int __wrap_clock_gettime(clockid_t clock, timespec* time) {
    return theSystem.cannotBeRead ? -1 : __real_clock_gettime(clock, time);
}

int __wrap_clock_settime(clockid_t clock, const timespec* time) {
    theSystem.setting = {clock, *time};
    errno = theSystem.settingError;
    return theSystem.settingError == 0 ? 0 : -1;
}
}

namespace {

TEST(LinuxClockTest, EachTypeIsItsLinuxClock) {
    EXPECT_EQ(CLOCK_MONOTONIC, LinuxClock::getSysType(kMonotonic));
    EXPECT_EQ(CLOCK_REALTIME, LinuxClock::getSysType(kRealtime));
    EXPECT_EQ(CLOCK_THREAD_CPUTIME_ID, LinuxClock::getSysType(kThreadCpu));
}

TEST(LinuxClockDeathTest, AnyOtherTypeFailsTheAssertionAndEndsTheProcess) {
    EXPECT_EXIT(LinuxClock::getSysType(static_cast<ClockType>(3)), testing::KilledBySignal(SIGABRT),
                "Src/Vl/System/LinuxClock.*false && \"Invalid clock type\"");
    EXPECT_EXIT(LinuxClock::getTime(static_cast<ClockType>(-1)), testing::KilledBySignal(SIGABRT),
                "Invalid clock type");
}

TEST(LinuxClockTest, ATimeIsTheReadingOfItsClock) {
    for (const clockid_t clock : {CLOCK_MONOTONIC, CLOCK_REALTIME, CLOCK_THREAD_CPUTIME_ID}) {
        const ClockType type = clock == CLOCK_MONOTONIC  ? kMonotonic
                               : clock == CLOCK_REALTIME ? kRealtime
                                                         : kThreadCpu;
        timespec before{};
        timespec after{};
        clock_gettime(clock, &before);
        const timespec time = LinuxClock::getTime(type);
        clock_gettime(clock, &after);
        EXPECT_LE(nanoseconds(before), nanoseconds(time));
        EXPECT_LE(nanoseconds(time), nanoseconds(after));
    }
}

TEST(LinuxClockTest, TheMonotonicClockIsTheUsualOne) {
    const timespec before = LinuxClock::getTime(kMonotonic);
    EXPECT_LE(nanoseconds(before), nanoseconds(LinuxClock::getTime()));
    EXPECT_LT(nanoseconds(LinuxClock::getTime()), nanoseconds(before) + 60'000'000'000LL);
}

TEST(LinuxClockDeathTest, AClockThatCannotBeReadFailsTheAssertionAndEndsTheProcess) {
    EXPECT_EXIT(
        {
            theSystem.cannotBeRead = true;
            LinuxClock::getTime(kMonotonic);
        },
        testing::KilledBySignal(SIGABRT), "Src/Vl/System/LinuxClock.*rval == 0 && \"clock_gettime failed\"");
}

TEST(LinuxClockTest, TheTimeIsSetOnTheRealTimeClock) {
    theSystem.settingError = 0;
    EXPECT_TRUE(LinuxClock::setTime({.tv_sec = 1'715'926'150, .tv_nsec = 5}));
    ASSERT_TRUE(theSystem.setting);
    EXPECT_EQ(CLOCK_REALTIME, theSystem.setting->clock);
    EXPECT_EQ(1'715'926'150, theSystem.setting->time.tv_sec);
    EXPECT_EQ(5, theSystem.setting->time.tv_nsec);
}

TEST(LinuxClockTest, ATimeThatTheKernelRefusesIsNotSet) {
    theSystem.settingError = EPERM;
    EXPECT_FALSE(LinuxClock::setTime({.tv_sec = 0, .tv_nsec = 0}));
    EXPECT_EQ(EPERM, errno);
}

struct Offset {
    int milliseconds;
};

class AbsoluteTimeTest : public testing::TestWithParam<Offset> {};

TEST_P(AbsoluteTimeTest, LiesThatFarFromNowAndIsNormalised) {
    const int milliseconds = GetParam().milliseconds;
    const long long offset = milliseconds * 1'000'000LL;
    for (const ClockType type : {kMonotonic, kRealtime}) {
        const long long before = nanoseconds(LinuxClock::getTime(type));
        const timespec moment = LinuxClock::GetAbsoluteTime(milliseconds, type);
        const long long after = nanoseconds(LinuxClock::getTime(type));
        EXPECT_LE(before + offset, nanoseconds(moment));
        EXPECT_LE(nanoseconds(moment), after + offset);
        EXPECT_GE(moment.tv_nsec, 0);
        EXPECT_LT(moment.tv_nsec, 1'000'000'000);
    }
}

INSTANTIATE_TEST_SUITE_P(Offsets, AbsoluteTimeTest,
                         testing::Values(Offset{0}, Offset{1}, Offset{999}, Offset{1000}, Offset{12'345},
                                         Offset{-1}, Offset{-999}, Offset{2'147'483'647}));

}  // namespace
