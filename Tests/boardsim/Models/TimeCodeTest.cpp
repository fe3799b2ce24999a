#include "Tools/boardsim/Models/TimeCode.h"

#include <gtest/gtest.h>

namespace {

using boardsim::encode;
using boardsim::FrameRate;
using boardsim::later;
using boardsim::TimeCode;

constexpr std::uint32_t kMidnight = 24 * 3600;

TEST(TimeCodeTest, TheDigitsAreWhereTheTimeCodeHasThem) {
    EXPECT_EQ(0U, encode(TimeCode{}));
    // 23:59:58, frame 29: hours and minutes in the high word, seconds and frames in the low one.
    EXPECT_EQ(0x0203'0509'0508'0209U, encode(TimeCode{kMidnight - 2, 29, {}}));
    EXPECT_EQ(0x0102'0304'0506'0007U, encode(TimeCode{12 * 3600 + 34 * 60 + 56, 7, {}}));
}

TEST(TimeCodeTest, EachByteOfTheUserBitsIsTwoGroupsTheLowOneFirst) {
    EXPECT_EQ(0x8070'6050'4030'2010U, encode(TimeCode{0, 0, {0x21, 0x43, 0x65, 0x87}}));
    EXPECT_EQ(0xF0F0'F0F0'F0F0'F0F0U, encode(TimeCode{0, 0, {0xFF, 0xFF, 0xFF, 0xFF}}));
}

TEST(TimeCodeTest, AFrameLaterCarriesThroughAllDigits) {
    EXPECT_EQ(encode({9, 10}), later(encode({9, 9}), 1, FrameRate::Fps25));
    EXPECT_EQ(encode({60, 0}), later(encode({59, 24}), 1, FrameRate::Fps25));
    EXPECT_EQ(encode({59, 25}), later(encode({59, 24}), 1, FrameRate::Fps30));
    EXPECT_EQ(encode({3600, 0}), later(encode({3599, 29}), 1, FrameRate::Fps30));
    EXPECT_EQ(encode({20 * 3600, 0}), later(encode({20 * 3600 - 1, 29}), 1, FrameRate::Fps30));
}

TEST(TimeCodeTest, AfterTheLastFrameOfADayComesTheFirstOfTheNext) {
    EXPECT_EQ(0U, later(encode({kMidnight - 1, 24}), 1, FrameRate::Fps25));
    EXPECT_EQ(0U, later(encode({kMidnight - 1, 29}), 1, FrameRate::Fps30));
}

TEST(TimeCodeTest, EveryFrameOfADayComesInItsTurn) {
    for (const FrameRate rate : {FrameRate::Fps25, FrameRate::Fps30}) {
        const auto perSecond = static_cast<std::uint32_t>(rate);
        boardsim::TimeCodeBits bits = 0;
        for (std::uint32_t frame = 0; frame < kMidnight * perSecond; ++frame) {
            if (encode({frame / perSecond, frame % perSecond}) != bits) {
                FAIL() << "frame " << frame << " is " << bits;
            }
            bits = later(bits, 1, rate);
        }
        EXPECT_EQ(0U, bits);
    }
}

TEST(TimeCodeTest, ManyFramesAreAsManySteps) {
    EXPECT_EQ(encode({10, 5}), later(encode({3, 20}), 6 * 25 + 10, FrameRate::Fps25));
    EXPECT_EQ(encode({3, 20}), later(encode({3, 20}), 5ULL * kMidnight * 30, FrameRate::Fps30));
    EXPECT_EQ(later(encode({3, 20}), ~0ULL % (kMidnight * 25ULL), FrameRate::Fps25),
              later(encode({3, 20}), ~0ULL, FrameRate::Fps25));
}

TEST(TimeCodeTest, UserBitsAndFlagsStay) {
    const TimeCode last{kMidnight - 1, 24, {0x12, 0x34, 0x56, 0x78}};
    constexpr boardsim::TimeCodeBits kFlags = 0x0C00'0800'0800'0C00U;
    EXPECT_EQ(kFlags | encode(TimeCode{0, 0, last.userBits}),
              later(kFlags | encode(last), 1, FrameRate::Fps25));
}

TEST(TimeCodeTest, DigitsThatNoTimeCodeHasAreTakenAtTheirWeight) {
    // 45 hours, 85 minutes, 85 seconds, 45 frames, all digits ones.
    const std::uint64_t frames = ((45 * 60 + 85) * 60 + 85) * 25 + 45 + 1;
    const std::uint64_t second = frames / 25 % kMidnight;
    const auto nonsense = later(~0ULL, 1, FrameRate::Fps25);
    EXPECT_EQ(encode({static_cast<std::uint32_t>(second), frames % 25}), nonsense & 0x030F'070F'070F'030FU);
    EXPECT_EQ(0xFCF0'F8F0'F8F0'FCF0U, nonsense & ~0x030F'070F'070F'030FU);
}

}  // namespace
