#include "Vl/HAL/Panel/NextGenOledPanel.h"

#include <filesystem>
#include <string>

#include "Tests/HAL/Panel/PanelWorld.h"
#include "Tests/HAL/Panel/ScreenCalls.h"
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

class NextGenOledPanelTest : public PanelWorld {};

TEST_F(NextGenOledPanelTest, InitForgetsWhatWasPressedBeforeAndSwitchesTheLedOff) {
    registers.set32(kLed, 3);
    EXPECT_TRUE(init());
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kCounters), Write32(kLed, 0)));
    EXPECT_TRUE(panel.initOk());
    EXPECT_THAT(syslog.lines(), IsEmpty());
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

TEST_F(NextGenOledPanelTest, TheScreenIsTheDeviceWithChipSelectZero) {
    support::PrivateWorld::write("/sys/bus/avalon/devices/other_spi/spi1.1/screen", "");
    EXPECT_FALSE(panel.init("other_spi", "oled_io_spi", board));
    support::PrivateWorld::write("/sys/bus/avalon/devices/other_spi/spi1.0/screen", "");
    EXPECT_TRUE(panel.init("other_spi", "oled_io_spi", board));
}

TEST_F(NextGenOledPanelTest, AnotherInitStartsAnew) {
    ASSERT_TRUE(init());
    EXPECT_TRUE(panel.setEncoderLED(Enums::LEDState::FirstColour));
    EXPECT_TRUE(init());
    EXPECT_FALSE(panel.setEncoderLED(Enums::LEDState::Off));
    EXPECT_EQ(1, descriptorsOn(kScreen));
    EXPECT_FALSE(panel.init("oled_spi", "no_core", board));
    EXPECT_FALSE(panel.initOk());
}

}  // namespace
