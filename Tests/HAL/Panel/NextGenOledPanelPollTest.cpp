// What the controls of NextGenOledPanel report.
#include <chrono>
#include <random>

#include "Tests/HAL/Panel/PanelWorld.h"
#include "Vl/HAL/Panel/OledPanelButtons.h"

namespace {

using support::Read32;
using testing::ElementsAre;
using Valen::NextGenOledPanel;
using Valen::OledPanelButtons;

class NextGenOledPanelPollTest : public PanelWorld {
protected:
    /// The word that a poll reports when the counter register goes from one value to another.
    std::uint32_t report(std::uint32_t from, std::uint32_t to) {
        registers.set32(kCounters, from);
        EXPECT_TRUE(init());
        registers.set32(kCounters, to);
        OledPanelButtons buttons{0xFFFFFFFF};
        const bool any = panel.getButtons(buttons);
        EXPECT_EQ(buttons.word != 0, any);
        return buttons.word;
    }
};

TEST_F(NextGenOledPanelPollTest, APollRightAfterInitReportsNothing) {
    registers.set32(kCounters, 0x00770FFF);
    ASSERT_TRUE(init());
    OledPanelButtons buttons{0xFFFFFFFF};
    EXPECT_FALSE(panel.getButtons(buttons));
    EXPECT_EQ(0U, buttons.word);
}

TEST_F(NextGenOledPanelPollTest, APollIsOneRegisterRead) {
    ASSERT_TRUE(init());
    registers.clearAccesses();
    OledPanelButtons buttons;
    panel.getButtons(buttons);
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kCounters)));
}

TEST_F(NextGenOledPanelPollTest, PressesAreCountedButtonByButton) {
    EXPECT_EQ(0x00030000U, report(0x000, 0x003));
    EXPECT_EQ(0x00180000U, report(0x000, 0x030));
    EXPECT_EQ(0x00C00000U, report(0x000, 0x300));
    EXPECT_EQ(0x00D10000U, report(0x111, 0x432));
}

TEST_F(NextGenOledPanelPollTest, NinePressesAreReportedAsOneOnPurpose) {
    EXPECT_EQ(0x00010000U, report(0x000, 0x009));
    EXPECT_EQ(0x00080000U, report(0x000, 0x090));
    EXPECT_EQ(0x00400000U, report(0x000, 0x900));
}

TEST_F(NextGenOledPanelPollTest, EightPressesBetweenTwoPollsAreLostOnPurpose) {
    registers.set32(kCounters, 0);
    ASSERT_TRUE(init());
    registers.set32(kCounters, 8);
    OledPanelButtons buttons;
    EXPECT_FALSE(panel.getButtons(buttons));
    EXPECT_EQ(0U, buttons.word);
}

TEST_F(NextGenOledPanelPollTest, PressesAcrossACountersWrapAreCounted) {
    EXPECT_EQ(0x00030000U, report(0x00E, 0x001));
    EXPECT_EQ(0x00180000U, report(0x0E0, 0x010));
    EXPECT_EQ(0x00C00000U, report(0xE00, 0x100));
}

TEST_F(NextGenOledPanelPollTest, EncoderStepsAreSigned) {
    EXPECT_EQ(0x18000000U, report(0x00FE0000, 0x00010000));  // +3 across the wrap
    EXPECT_EQ(0xE8000000U, report(0x00010000, 0x00FE0000));  // -3
    EXPECT_EQ(0x08000000U, report(0x007F0000, 0x00800000));
    EXPECT_EQ(0x78000000U, report(0x00000000, 0x000F0000));  // +15
    EXPECT_EQ(0x80000000U, report(0x00000000, 0x00100000));  // +16 reads as -16
}

TEST_F(NextGenOledPanelPollTest, ThirtyTwoEncoderStepsBetweenTwoPollsAreLost) {
    EXPECT_EQ(0U, report(0x00000000, 0x00200000));
    EXPECT_EQ(0U, report(0x00F00000, 0x00100000));
    EXPECT_EQ(0x08000000U, report(0x00000000, 0x00210000));
}

TEST_F(NextGenOledPanelPollTest, EveryReportIsTheDifferenceOfTheCounters) {
    std::mt19937 random(20);  // NOLINT: the same numbers every time
    ASSERT_TRUE(init());
    std::uint32_t before = 0;
    for (int i = 0; i < 10'000; ++i) {
        const auto now = static_cast<std::uint32_t>(random());
        const auto pressed = [&](unsigned bit) {
            return ((now >> bit) % 16 + 16 - (before >> bit) % 16) % 16 % 8;
        };
        const int turned = static_cast<int>(now >> 16 & 0xFF) - static_cast<int>(before >> 16 & 0xFF);
        const int steps = ((turned + 16) % 32 + 32) % 32 - 16;
        registers.set32(kCounters, now);
        OledPanelButtons buttons;
        const bool any = panel.getButtons(buttons);
        EXPECT_EQ(pressed(0), buttons.word >> 16 & 7);
        EXPECT_EQ(pressed(4), buttons.word >> 19 & 7);
        EXPECT_EQ(pressed(8), buttons.word >> 22 & 7);
        EXPECT_EQ(steps, buttons.encoderSteps());
        EXPECT_EQ(0U, buttons.word & 0x0600FFFF);
        EXPECT_EQ(buttons.word != 0, any);
        before = now;
    }
}

TEST_F(NextGenOledPanelPollTest, TheBitsBesideTheCountersAreIgnored) {
    EXPECT_EQ(0U, report(0x00000000, 0xFF00F000));
    EXPECT_EQ(0U, report(0xFF00F000, 0x00000000));
}

TEST_F(NextGenOledPanelPollTest, EveryPollCountsFromTheOneBefore) {
    ASSERT_TRUE(init());
    OledPanelButtons buttons;
    registers.set32(kCounters, 0x00020001);
    EXPECT_TRUE(panel.getButtons(buttons));
    EXPECT_EQ(0x10010000U, buttons.word);
    EXPECT_FALSE(panel.getButtons(buttons));
    EXPECT_EQ(0U, buttons.word);
    registers.set32(kCounters, 0x00010001);
    EXPECT_TRUE(panel.getButtons(buttons));
    EXPECT_EQ(0xF8000000U, buttons.word);
}

TEST_F(NextGenOledPanelPollTest, WaitButtonPollsOnceAfter50Milliseconds) {
    ASSERT_TRUE(init());
    registers.clearAccesses();
    registers.set32(kCounters, 1);
    OledPanelButtons buttons;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(panel.waitButton(buttons));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
    EXPECT_EQ(0x00010000U, buttons.word);
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kCounters)));
}

TEST_F(NextGenOledPanelPollTest, WaitButtonTakesAnOverriddenPoll) {
    struct Pressed : NextGenOledPanel {
        bool getButtons(OledPanelButtons& buttons) override {
            buttons.word = 0x00400000;
            return true;
        }
    } pressed;
    OledPanelButtons buttons;
    EXPECT_TRUE(pressed.waitButton(buttons));
    EXPECT_EQ(0x00400000U, buttons.word);
}

}  // namespace
