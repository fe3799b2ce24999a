#include "Vl/HAL/Panel/NextGenOledPanel.h"

#include <chrono>
#include <filesystem>
#include <string>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Tests/HAL/Panel/ScreenCalls.h"
#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"
#include "Vl/Graphics/OLED.h"
#include "Vl/HAL/Panel/OledPanelButtons.h"

namespace {

using support::Read32;
using support::Write32;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::NextGenOledPanel;
using Valen::OledPanelButtons;

using LedState = Enums::LEDState::LEDState_T;

constexpr std::size_t kLed = 0x1040;
constexpr std::size_t kCounters = 0x1044;

const std::string kScreen = "/sys/bus/avalon/devices/oled_spi/spi1.0/screen";

/// A board whose FPGA has the panel's registers and, unless removed, its screen.
class NextGenOledPanelTest : public BoardWorld {
protected:
    NextGenOledPanelTest() {
        writeLayout("fpga", core("oled_io_spi", {7, kLed}));
        support::PrivateWorld::write(kScreen, "");
        syslog.lines();  // what the board missed
    }

    bool init() { return panel.init("oled_spi", "oled_io_spi", board); }

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

    support::DeviceRegisterWindow registers;
    TestBoard board;
    NextGenOledPanel panel;
};

TEST_F(NextGenOledPanelTest, InitForgetsWhatWasPressedBeforeAndSwitchesTheLedOff) {
    registers.set32(kLed, 3);
    EXPECT_TRUE(init());
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kCounters), Write32(kLed, 0)));
    EXPECT_TRUE(panel.initOk());
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(NextGenOledPanelTest, APollRightAfterInitReportsNothing) {
    registers.set32(kCounters, 0x00770FFF);
    ASSERT_TRUE(init());
    OledPanelButtons buttons{0xFFFFFFFF};
    EXPECT_FALSE(panel.getButtons(buttons));
    EXPECT_EQ(0U, buttons.word);
}

TEST_F(NextGenOledPanelTest, APollIsOneRegisterRead) {
    ASSERT_TRUE(init());
    registers.clearAccesses();
    OledPanelButtons buttons;
    panel.getButtons(buttons);
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kCounters)));
}

TEST_F(NextGenOledPanelTest, PressesAreCountedButtonByButton) {
    EXPECT_EQ(0x00030000U, report(0x000, 0x003));
    EXPECT_EQ(0x00180000U, report(0x000, 0x030));
    EXPECT_EQ(0x00C00000U, report(0x000, 0x300));
    EXPECT_EQ(0x00D10000U, report(0x111, 0x432));
}

TEST_F(NextGenOledPanelTest, NinePressesAreReportedAsOneOnPurpose) {
    EXPECT_EQ(0x00010000U, report(0x000, 0x009));
    EXPECT_EQ(0x00080000U, report(0x000, 0x090));
    EXPECT_EQ(0x00400000U, report(0x000, 0x900));
}

TEST_F(NextGenOledPanelTest, EightPressesBetweenTwoPollsAreLostOnPurpose) {
    registers.set32(kCounters, 0);
    ASSERT_TRUE(init());
    registers.set32(kCounters, 8);
    OledPanelButtons buttons;
    EXPECT_FALSE(panel.getButtons(buttons));
    EXPECT_EQ(0U, buttons.word);
}

TEST_F(NextGenOledPanelTest, PressesAcrossACountersWrapAreCounted) {
    EXPECT_EQ(0x00030000U, report(0x00E, 0x001));
    EXPECT_EQ(0x00180000U, report(0x0E0, 0x010));
    EXPECT_EQ(0x00C00000U, report(0xE00, 0x100));
}

TEST_F(NextGenOledPanelTest, EncoderStepsAreSigned) {
    EXPECT_EQ(0x18000000U, report(0x00FE0000, 0x00010000));  // +3 across the wrap
    EXPECT_EQ(0xE8000000U, report(0x00010000, 0x00FE0000));  // -3
    EXPECT_EQ(0x08000000U, report(0x007F0000, 0x00800000));
    EXPECT_EQ(0x78000000U, report(0x00000000, 0x000F0000));  // +15
    EXPECT_EQ(0x80000000U, report(0x00000000, 0x00100000));  // +16 reads as -16
}

TEST_F(NextGenOledPanelTest, TheBitsBesideTheCountersAreIgnored) {
    EXPECT_EQ(0U, report(0x00000000, 0xFF00F000));
    EXPECT_EQ(0U, report(0xFF00F000, 0x00000000));
}

TEST_F(NextGenOledPanelTest, EveryPollCountsFromTheOneBefore) {
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

TEST_F(NextGenOledPanelTest, WaitButtonPollsOnceAfter50Milliseconds) {
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

TEST_F(NextGenOledPanelTest, WaitButtonTakesAnOverriddenPoll) {
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

TEST_F(NextGenOledPanelTest, AFrameIsPushedUpsideDownAndLeftAsItWas) {
    ASSERT_TRUE(init());
    VLGraphics::OLED frame(160, 48);
    frame.fill(0x80000000);
    frame.getBmp().FillRect(30, 10, 0x800000ff);
    VLGraphics::OLED turned(160, 48);
    turned.fill(0x80000000);
    turned.getBmp().FillRect(30, 10, 0x800000ff);
    turned.rotate();
    const auto bytes = [](const VLGraphics::OLED& oled) {
        return std::string(reinterpret_cast<const char*>(oled.getBuffer()), 15360);
    };
    const std::string before = bytes(frame);

    ScreenCalls screen;
    EXPECT_TRUE(panel.updateScreen(&frame));
    EXPECT_EQ(bytes(turned), world.read(kScreen));
    EXPECT_EQ(before, bytes(frame));
    EXPECT_THAT(screen.calls, ElementsAre("lseek 0", "write 15360"));
}

TEST_F(NextGenOledPanelTest, TheLedsColoursAreWiredTheOtherWayRound) {
    ASSERT_TRUE(init());
    const struct {
        int state;
        std::uint32_t led;
    } rows[] = {{1, 2}, {2, 1}, {3, 3}, {0, 0}, {3, 3}, {4, 0}, {1, 2}, {-1, 0}, {2, 1}, {0x101, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.state);
        EXPECT_TRUE(panel.setEncoderLED(static_cast<LedState>(row.state)));
        registers.clearAccesses();
        panel.applyLEDs();
        EXPECT_THAT(registers.accesses(), ElementsAre(Write32(kLed, row.led)));
    }
}

TEST_F(NextGenOledPanelTest, ChoosingTheLedsCurrentStateIsNoChange) {
    ASSERT_TRUE(init());
    EXPECT_FALSE(panel.setEncoderLED(Enums::LEDState::Off));
    EXPECT_TRUE(panel.setEncoderLED(Enums::LEDState::FirstColour));
    EXPECT_FALSE(panel.setEncoderLED(Enums::LEDState::FirstColour));
}

TEST_F(NextGenOledPanelTest, ChoosingALedStateTouchesNoRegister) {
    ASSERT_TRUE(init());
    registers.clearAccesses();
    panel.setEncoderLED(Enums::LEDState::BothColours);
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

TEST_F(NextGenOledPanelTest, WithoutRegistersInitFailsAndLooksForNoScreen) {
    writeLayout("fpga", core("other", {1, 0x40}));
    EXPECT_FALSE(init());
    EXPECT_FALSE(panel.initOk());
    EXPECT_THAT(syslog.lines(), ElementsAre(error("OLED: failed to get OLED regs oled_io_spi!")));
    EXPECT_EQ(0, descriptorsOn(kScreen));
}

TEST_F(NextGenOledPanelTest, WithoutRegistersNothingIsEverPressedOrLit) {
    OledPanelButtons buttons{0xFFFFFFFF};
    EXPECT_FALSE(panel.getButtons(buttons));
    EXPECT_EQ(0U, buttons.word);
    buttons.word = 0xFFFFFFFF;
    EXPECT_FALSE(panel.waitButton(buttons));
    EXPECT_EQ(0U, buttons.word);
    EXPECT_TRUE(panel.setEncoderLED(Enums::LEDState::FirstColour));
    panel.applyLEDs();
    EXPECT_THAT(registers.accesses(), IsEmpty());
    EXPECT_FALSE(panel.initOk());
}

TEST_F(NextGenOledPanelTest, RegistersOutsideTheMappedSpaceCountAsMissing) {
    writeLayout("fpga", core("oled_io_spi", {7, 0x10000}));
    EXPECT_FALSE(init());
    EXPECT_FALSE(panel.initOk());
}

TEST_F(NextGenOledPanelTest, WithoutAScreenInitFailsButTheControlsWorkOnPurpose) {
    std::filesystem::remove(kScreen);
    EXPECT_FALSE(init());
    EXPECT_THAT(syslog.lines(), ElementsAre(error("OLED: failed to open OLED SPI oled_spi!")));
    EXPECT_TRUE(panel.initOk());
    EXPECT_THAT(registers.accesses(), IsEmpty());
    registers.set32(kCounters, 0x100);
    OledPanelButtons buttons;
    EXPECT_TRUE(panel.getButtons(buttons));
    EXPECT_EQ(0x00400000U, buttons.word);
}

TEST_F(NextGenOledPanelTest, WithoutItsSpiDeviceInitFailsLikewise) {
    EXPECT_FALSE(panel.init("no_spi", "oled_io_spi", board));
    EXPECT_THAT(syslog.lines(), ElementsAre(error("OLED: failed to open OLED SPI no_spi!")));
    EXPECT_TRUE(panel.initOk());
}

}  // namespace
