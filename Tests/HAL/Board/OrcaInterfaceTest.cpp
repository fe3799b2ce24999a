#include "Vl/HAL/Board/OrcaInterface.h"

#include "Tests/HAL/Board/PanelBoardTest.h"

namespace {

using support::Read32;
using support::Write32;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::OrcaInterface;

class OrcaInterfaceTest : public PanelBoardTest<OrcaInterface> {};

TEST_F(OrcaInterfaceTest, IsBuiltWithoutALinkAndWithoutHardware) {
    std::remove("/dev/fpga");
    std::remove("/dev/gpio");
    const OrcaInterface board(nullptr);
    EXPECT_EQ(&board, Valen::CPInterface::getInstance());
    EXPECT_THAT(syslog.lines(), ElementsAre(error("CPCardInterface: could not open gpio!")));
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
    logUpTo(Valen::Log::SeverityLevel::DEBUG);
    board.getOledPanel(0);
    EXPECT_THAT(syslog.lines(), ElementsAre(debug(kOledIsPresent)));
}

TEST_F(OrcaInterfaceTest, APanelThatFailedIsHandedOutAllTheSame) {
    writeLayout("fpga", core("other", {1, 0x40}));
    OrcaInterface board(nullptr);
    logUpTo(Valen::Log::SeverityLevel::DEBUG);
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
