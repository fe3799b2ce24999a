#include "Vl/HAL/Board/OrcaInterface.h"

#include <memory>

#include "Tests/HAL/Board/VariantWorld.h"
#include "Vl/HAL/Chips/GenericEthernetPhy.h"
#include "Vl/HAL/Panel/OledPanelButtons.h"
#include "Vl/HAL/Panel/OledPanelInterface.h"

namespace {

using support::Read32;
using support::Write32;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::OrcaInterface;
using Valen::Log::SeverityLevel::DEBUG;

class OrcaInterfaceTest : public VariantWorld {};

TEST_F(OrcaInterfaceTest, IsBuiltWithoutAWordOnAHealthyBoard) {
    const OrcaInterface board(nullptr);
    EXPECT_EQ(&board, Valen::CPInterface::getInstance());
    EXPECT_THAT(syslog.lines(), IsEmpty());
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

TEST_F(OrcaInterfaceTest, IsBuiltWithoutALinkAndWithoutHardware) {
    removeEverything();
    const OrcaInterface board(nullptr);
    EXPECT_EQ(&board, Valen::CPInterface::getInstance());
    EXPECT_THAT(
        syslog.lines(),
        ElementsAre(
            error("CPCardInterface: could not open gpio!"), error("Cardcontroller: pio_temp_fpga not found!"),
            error("Cardcontroller: pio_temp_fpga not found!"),
            error("Cardcontroller: pio_temp_fpga not found!"), error("Core: Failed to initialize QSFP GPIO"),
            error("Core: Unable to find i2c device: led_sync"), error("Core: Failed to initialize led_sync "),
            error("Core: Unable to find i2c device: eth_led"), error("Core: Failed to initialize eth_led ")));
}

TEST_F(OrcaInterfaceTest, WhereNothingAnswersEveryAccessorFails) {
    removeEverything();
    OrcaInterface board(nullptr);
    syslog.lines();
    int celsius = 1000;
    int limit = 0;
    EXPECT_FALSE(board.getFPGATemperature(0, celsius, limit));
    EXPECT_FALSE(board.getSDITemperature(celsius, limit));
    EXPECT_FALSE(board.getFanTemperature(celsius, limit));
    EXPECT_FALSE(board.getOledTemperature(celsius, limit));
    EXPECT_FALSE(board.getETHTemperature(celsius, limit));
    EXPECT_EQ(1000, celsius);
    EXPECT_EQ(-1, board.getQsfpIo(1, 1)->getInputA());
    EXPECT_EQ(-1, board.getSyncIo()->getInputA());
    EXPECT_FALSE(board.getResetIOs()->resetFlipFlops());
    EXPECT_FALSE(board.setPsuModuledLed(0, OrcaInterface::PinHigh));
    EXPECT_EQ(-1, board.getPhy(0)->getPhyId1());
    EXPECT_EQ(-1, board.getConfigEthPhy(0)->getPhyId1());
    EXPECT_EQ("", board.getVersions().serialText);
    EXPECT_FALSE(board.getOledPanel(0)->initOk());
}

TEST_F(OrcaInterfaceTest, ClosesEverythingAtTheEnd) {
    const int before = descriptors();
    {
        const OrcaInterface board(nullptr);
        EXPECT_LT(before, descriptors());
    }
    EXPECT_EQ(before, descriptors());
    EXPECT_EQ(nullptr, Valen::CPInterface::getInstance());
}

TEST_F(OrcaInterfaceTest, ClosesEverythingThatCouldNotBeSetUpToo) {
    kernel.failing = {"2-", "3-", "i2c-4", "i2c-2 select"};
    const int before = descriptors();
    { const OrcaInterface board(nullptr); }
    EXPECT_EQ(before, descriptors());
}

TEST_F(OrcaInterfaceTest, TakesThePanelOutOfResetAsTheOlderBoardDoes) {
    const OrcaInterface board(nullptr);
    EXPECT_THAT(kernel.callsOf("gpio"), ElementsAre("gpio 7d06 c3", "gpio 7d04 10100c3", "gpio 7d07 c3"));
}

TEST_F(OrcaInterfaceTest, TellsNoCardTemperatureEither) {
    OrcaInterface board(nullptr);
    unsigned int value = 1000;
    EXPECT_EQ(-7, board.GetCardTemperature(value, Enums::Temperature::Fpga));
    EXPECT_EQ(1000u, value);
}

TEST_F(OrcaInterfaceTest, HasOnePanel) {
    EXPECT_EQ(1, OrcaInterface(nullptr).getOledPanelCount());
}

TEST_F(OrcaInterfaceTest, ThePanelIsOnItsOwnCores) {
    OrcaInterface board(nullptr);
    const auto panel = board.getOledPanel(0);
    ASSERT_NE(nullptr, panel);
    EXPECT_TRUE(panel->initOk());
    EXPECT_EQ(1, descriptorsOn(screenOf("subsys_hps_oled_spi")));
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kNewerPanel + 4), Write32(kNewerPanel, 0)));
}

TEST_F(OrcaInterfaceTest, ThePanelsIndexIsIgnored) {
    OrcaInterface board(nullptr);
    for (const int index : {-1, 1, 1000}) {
        EXPECT_TRUE(board.getOledPanel(index)->initOk());
    }
}

TEST_F(OrcaInterfaceTest, TheOwnerOfThePanelClosesItByDestroyingIt) {
    OrcaInterface board(nullptr);
    board.getOledPanel(0).reset();
    EXPECT_EQ(0, descriptorsOn(screenOf("subsys_hps_oled_spi")));
}

TEST_F(OrcaInterfaceTest, HandingOutThePanelIsLoggedForDebugging) {
    OrcaInterface board(nullptr);
    board.getOledPanel(0);
    EXPECT_THAT(syslog.lines(), IsEmpty());
    logUpTo(DEBUG);
    board.getOledPanel(0);
    EXPECT_THAT(syslog.lines(), ElementsAre(debug(kOledIsPresent)));
}

TEST_F(OrcaInterfaceTest, APanelThatFailedIsHandedOutAllTheSame) {
    removeCore("subsys_hps_oled_io_spi");
    OrcaInterface board(nullptr);
    logUpTo(DEBUG);
    const auto panel = board.getOledPanel(0);
    ASSERT_NE(nullptr, panel);
    EXPECT_FALSE(panel->initOk());
    EXPECT_THAT(syslog.lines(), ElementsAre(debug(kOledIsPresent),
                                            error("OLED: failed to get OLED regs subsys_hps_oled_io_spi!")));
}

TEST_F(OrcaInterfaceTest, APanelWithoutAScreenIsHandedOutWithItsButtons) {
    std::remove(screenOf("subsys_hps_oled_spi").c_str());
    OrcaInterface board(nullptr);
    const auto panel = board.getOledPanel(0);
    EXPECT_TRUE(panel->initOk());
    EXPECT_THAT(syslog.lines(), ElementsAre(error("OLED: failed to open OLED SPI subsys_hps_oled_spi!")));
    registers.set32(kNewerPanel + 4, 1);
    Valen::OledPanelButtons buttons;
    EXPECT_TRUE(panel->getButtons(buttons));
    EXPECT_EQ(1, buttons.left());
}

}  // namespace
