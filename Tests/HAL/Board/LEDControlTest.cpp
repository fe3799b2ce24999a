#include "Vl/HAL/Board/LEDControl.h"

#include <gmock/gmock.h>

#include <bit>

namespace {

using testing::Each;
using testing::ElementsAre;
using Valen::LEDControl;

constexpr std::uint64_t kFirstWord = 0xFFFFFFFFFFFFFFFF;
constexpr std::uint64_t kSecondWord = 0xFFFFFFFFC0000000;

LEDControl after(int state, LEDControl leds = {}) {
    leds.setAll(static_cast<Enums::LEDState::LEDState_T>(state));
    return leds;
}

TEST(LEDControlTest, AllLedsAre98) {
    EXPECT_EQ(98, std::popcount(kFirstWord) + std::popcount(kSecondWord));
    EXPECT_THAT(after(3).first, ElementsAre(kFirstWord, kSecondWord));
    EXPECT_THAT(after(3).second, ElementsAre(kFirstWord, kSecondWord));
}

TEST(LEDControlTest, BitOneOfAStateIsTheFirstMaskAndBitZeroTheSecond) {
    EXPECT_THAT(after(2).first, ElementsAre(kFirstWord, kSecondWord));
    EXPECT_THAT(after(2).second, Each(0));
    EXPECT_THAT(after(1).first, Each(0));
    EXPECT_THAT(after(1).second, ElementsAre(kFirstWord, kSecondWord));
}

TEST(LEDControlTest, AStateLeavesTheOtherColourAsItWasOnPurpose) {
    EXPECT_EQ(after(3), after(1, after(2)));
    EXPECT_EQ(after(3), after(2, after(1)));
}

TEST(LEDControlTest, OffTakesBothColoursAway) {
    const LEDControl leds = after(0, after(3));
    EXPECT_THAT(leds.first, Each(0));
    EXPECT_THAT(leds.second, Each(0));
}

TEST(LEDControlTest, ClearingAlsoMakesTheLevelFull) {
    LEDControl leds = after(3);
    leds.level = 7;
    leds.changeMark = 5;
    leds.clear();
    EXPECT_EQ(100, leds.level);
    EXPECT_THAT(leds.first, Each(0));
    EXPECT_THAT(leds.second, Each(0));
    EXPECT_EQ(-1, leds.changeMark);
}

TEST(LEDControlTest, EveryOperationLeavesAMark) {
    EXPECT_EQ(0, LEDControl().changeMark);
    for (const int state : {0, 1, 2, 3}) {
        LEDControl leds;
        leds.level = 7;
        leds = after(state, leds);
        EXPECT_EQ(-1, leds.changeMark);
        EXPECT_EQ(7, leds.level);
    }
}

}  // namespace
