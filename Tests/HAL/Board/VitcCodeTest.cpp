#include "Vl/HAL/Board/VitcCode.h"

#include <gmock/gmock.h>

namespace {

using Valen::Vitc;
using Valen::VitcCode;
using Valen::VitcRate;

/// One field of a code: where its digits and its user bits are.
struct Place {
    Vitc time;
    std::uint32_t low;
    std::uint32_t high;
};

TEST(VitcCodeTest, EveryDigitAndEveryGroupHasItsPlace) {
    const Place places[] = {
        {{}, 0, 0},
        {{.milliseconds = 7 * 40, .frames = 7}, 0x00000007, 0},
        {{.milliseconds = 800, .frames = 20}, 0x00000200, 0},
        {{.seconds = 9}, 0x00090000, 0},
        {{.seconds = 50}, 0x05000000, 0},
        {{.seconds = 9 * 60}, 0, 0x00000009},
        {{.seconds = 50 * 60}, 0, 0x00000500},
        {{.seconds = 9 * 3600}, 0, 0x00090000},
        {{.seconds = 20 * 3600}, 0, 0x02000000},
        {{.userBits = {0x0F, 0, 0, 0}}, 0x000000F0, 0},
        {{.userBits = {0xF0, 0, 0, 0}}, 0x0000F000, 0},
        {{.userBits = {0, 0x0F, 0, 0}}, 0x00F00000, 0},
        {{.userBits = {0, 0xF0, 0, 0}}, 0xF0000000, 0},
        {{.userBits = {0, 0, 0x0F, 0}}, 0, 0x000000F0},
        {{.userBits = {0, 0, 0xF0, 0}}, 0, 0x0000F000},
        {{.userBits = {0, 0, 0, 0x0F}}, 0, 0x00F00000},
        {{.userBits = {0, 0, 0, 0xF0}}, 0, 0xF0000000},
    };
    for (const auto& [time, low, high] : places) {
        const VitcCode code{low, high};
        EXPECT_EQ(code, VitcCode::pack(time, VitcRate::Frames25)) << std::hex << low << ' ' << high;
        EXPECT_EQ(time, code.unpack(VitcRate::Frames25)) << std::hex << low << ' ' << high;
    }
}

TEST(VitcCodeTest, EverySecondOfTheDayComesBack) {
    for (std::uint32_t second = 0; second < 86400; ++second) {
        const Vitc time{.seconds = second, .milliseconds = 40, .frames = 1, .userBits = {1, 2, 3, 4}};
        ASSERT_EQ(time, VitcCode::pack(time, VitcRate::Frames25).unpack(VitcRate::Frames25));
    }
}

TEST(VitcCodeTest, FramesOf40MillisecondsComeBackWithTheirFirstMillisecond) {
    for (std::uint32_t ms = 0; ms < 1000; ++ms) {
        const Vitc time = VitcCode::pack({.milliseconds = ms}, VitcRate::Frames25).unpack(VitcRate::Frames25);
        ASSERT_EQ(ms / 40, time.frames);
        ASSERT_EQ(ms - ms % 40, time.milliseconds);
    }
}

TEST(VitcCodeTest, ThirtyFramesMakeASecond) {
    for (std::uint32_t ms = 0; ms < 1000; ++ms) {
        const Vitc time = VitcCode::pack({.milliseconds = ms}, VitcRate::Frames30).unpack(VitcRate::Frames30);
        ASSERT_EQ(ms * 30 / 1000, time.frames);
        ASSERT_EQ(time.frames * 1000 / 30, time.milliseconds);
    }
}

TEST(VitcCodeTest, TheFramesFollowFromTheMillisecondsNotFromTheFrames) {
    EXPECT_EQ(VitcCode{}, VitcCode::pack({.frames = 12}, VitcRate::Frames25));
}

TEST(VitcCodeTest, Frame29Of30IsAt966Milliseconds) {
    EXPECT_EQ(966U, (VitcCode{0x209, 0}.unpack(VitcRate::Frames30).milliseconds));
}

TEST(VitcCodeTest, TooLargeNumbersStayInTheirFields) {
    const Vitc time{.seconds = 0xFFFFFFFF, .milliseconds = 0xFFFFFFFF};
    for (const VitcRate rate : {VitcRate::Frames25, VitcRate::Frames30}) {
        const VitcCode code = VitcCode::pack(time, rate);
        EXPECT_EQ(0U, code.low & 0xF8F0FCF0U);
        EXPECT_EQ(0U, code.high & 0xFCF0F8F0U);
    }
}

TEST(VitcCodeTest, BitsOfOtherMeaningAreNotLookedAt) {
    EXPECT_EQ(Vitc{}, (VitcCode{0x08000C00, 0x0C000800}.unpack(VitcRate::Frames25)));
}

TEST(VitcCodeTest, DigitsThatAreNoneAreCountedOn) {
    const Vitc time = VitcCode{0x0F0F0F0F, 0x0F0F0F0F}.unpack(VitcRate::Frames25);
    EXPECT_EQ(45U, time.frames);
    EXPECT_EQ(45U * 3600 + 85 * 60 + 85, time.seconds);
}

}  // namespace
