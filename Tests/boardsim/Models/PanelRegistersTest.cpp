#include "Tools/boardsim/Models/PanelRegisters.h"

#include <gtest/gtest.h>

namespace {

using boardsim::PanelKey;
using boardsim::PanelRegisters;

TEST(PanelRegistersTest, AreZeroAfterPowerOn) {
    const PanelRegisters panel;
    EXPECT_EQ(0U, panel.counters());
    EXPECT_EQ(0U, panel.led());
}

struct Place {
    PanelKey key;
    std::uint32_t afterOne;
    std::uint32_t afterThree;
};

class PanelKeyPlace : public testing::TestWithParam<Place> {};

TEST_P(PanelKeyPlace, CountsInItsOwnBits) {
    PanelRegisters panel;
    panel.operate(GetParam().key);
    EXPECT_EQ(GetParam().afterOne, panel.counters());
    panel.operate(GetParam().key, 2);
    EXPECT_EQ(GetParam().afterThree, panel.counters());
}

INSTANTIATE_TEST_SUITE_P(Keys, PanelKeyPlace,
                         testing::Values(Place{PanelKey::Left, 0x00000001, 0x00000003},
                                         Place{PanelKey::Right, 0x00000010, 0x00000030},
                                         Place{PanelKey::Red, 0x00000100, 0x00000300},
                                         Place{PanelKey::Clockwise, 0x00010000, 0x00030000},
                                         Place{PanelKey::CounterClockwise, 0x00FF0000, 0x00FD0000}));

TEST(PanelRegistersTest, PressCountersWrapAfterFifteenWithoutTouchingTheNext) {
    PanelRegisters panel;
    panel.operate(PanelKey::Left, 14);
    panel.operate(PanelKey::Left, 3);
    EXPECT_EQ(0x1U, panel.counters());
    panel.operate(PanelKey::Red, 16);
    EXPECT_EQ(0x1U, panel.counters());
}

TEST(PanelRegistersTest, TheEncoderPositionWrapsBothWays) {
    PanelRegisters panel;
    panel.operate(PanelKey::CounterClockwise, 2);
    EXPECT_EQ(0x00FE0000U, panel.counters());
    panel.operate(PanelKey::Clockwise, 3);
    EXPECT_EQ(0x00010000U, panel.counters());
}

TEST(PanelRegistersTest, TheLedTakesItsTwoBits) {
    PanelRegisters panel;
    EXPECT_FALSE(panel.write(0x0, 4, 3));
    EXPECT_EQ(3U, panel.led());
    EXPECT_FALSE(panel.write(0x0, 4, 0));
    EXPECT_EQ(0U, panel.led());
}

TEST(PanelRegistersTest, WrongWritesAreRefusedAndChangeNothing) {
    PanelRegisters panel;
    panel.operate(PanelKey::Left);
    EXPECT_TRUE(panel.write(0x4, 4, 0)) << "the counters are read-only";
    EXPECT_TRUE(panel.write(0x0, 1, 1)) << "the bus is 32 bits wide";
    EXPECT_TRUE(panel.write(0x0, 4, 4)) << "there are two LED bits";
    EXPECT_TRUE(panel.write(0x8, 4, 0)) << "there is no such register";
    EXPECT_EQ(1U, panel.counters());
    EXPECT_EQ(0U, panel.led());
}

TEST(PanelRegistersTest, KeyNamesGoBothWays) {
    for (const char* name : {"left", "right", "red", "cw", "ccw"}) {
        const auto key = boardsim::keyNamed(name);
        ASSERT_TRUE(key) << name;
        EXPECT_EQ(name, boardsim::keyName(*key));
    }
    for (const char* name : {"", "Left", "lef", "leftx", "wait"}) {
        EXPECT_FALSE(boardsim::keyNamed(name)) << name;
    }
}

}  // namespace
