#include "Vl/Common/Enums/LEDState.h"

#include <gtest/gtest.h>

#include "Tests/Common/Enums/Enumeration.h"

namespace {

namespace LEDState = Enums::LEDState;

TEST(LEDStateTest, EachColourIsOneBit) {
    EXPECT_EQ(0, LEDState::Off);
    EXPECT_EQ(1, LEDState::FirstColour);
    EXPECT_EQ(2, LEDState::SecondColour);
    EXPECT_EQ(3, LEDState::BothColours);
    EXPECT_EQ(LEDState::BothColours, LEDState::FirstColour | LEDState::SecondColour);
}

TEST(LEDStateTest, FourStatesAreValid) {
    for (long number = -10; number < 100; ++number) {
        EXPECT_EQ(number >= 0 && number < 4, LEDState::IsValidNum(number)) << number;
    }
    for (const long number : kStrangeNumbers) {
        EXPECT_FALSE(LEDState::IsValidNum(number)) << number;
    }
    EXPECT_EQ(4, LEDState::Size());
}

}  // namespace
