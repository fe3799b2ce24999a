#include "Vl/Common/Strings/WallClock.h"

#include <gmock/gmock.h>

namespace {

std::int64_t microsecondsNow() {
    timeval now;
    gettimeofday(&now, nullptr);
    return std::int64_t{now.tv_sec} * 1'000'000 + now.tv_usec;
}

TEST(WallClockTest, StampsAreThoseOfTheWallClock) {
    const std::int64_t before = microsecondsNow();
    const std::int64_t microseconds = Valen::GetTimeStampInMicroseconds();
    const std::int64_t milliseconds = Valen::GetUnsafeTimeStamp();
    const std::int64_t after = microsecondsNow();
    EXPECT_GE(microseconds, before);
    EXPECT_LE(microseconds, after);
    EXPECT_GE(milliseconds, before / 1000);
    EXPECT_LE(milliseconds, after / 1000);
}

TEST(WallClockTest, TheMillisecondWithinTheSecondFollowsTheWallClock) {
    const std::int64_t before = microsecondsNow() / 1000;
    const int millisecond = Valen::GetSecMS();
    const std::int64_t after = microsecondsNow() / 1000;
    EXPECT_GE(millisecond, 0);
    EXPECT_LE(millisecond, 999);
    // So long after `before` did the reading come, unless a whole second went by.
    const std::int64_t since = (millisecond - before % 1000 + 1000) % 1000;
    EXPECT_LE(since, after - before);
}

struct Split {
    std::int64_t milliseconds;
    long seconds;
    long microseconds;
};

class MsecToTimevalTest : public testing::TestWithParam<Split> {};

TEST_P(MsecToTimevalTest, SplitsIntoSecondsAndMicroseconds) {
    timeval time{77, 77};
    Valen::MsecToTimeval(GetParam().milliseconds, time);
    EXPECT_EQ(time.tv_sec, GetParam().seconds);
    EXPECT_EQ(time.tv_usec, GetParam().microseconds);
}

INSTANTIATE_TEST_SUITE_P(Times, MsecToTimevalTest,
                         testing::Values(Split{0, 0, 0}, Split{1, 0, 1000}, Split{999, 0, 999000},
                                         Split{1000, 1, 0}, Split{2500, 2, 500000}, Split{-1500, -1, -500000},
                                         Split{5'000'000'000'123, 5'000'000'000, 123000}));

}  // namespace
