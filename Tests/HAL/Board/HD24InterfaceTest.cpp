#include "Vl/HAL/Board/HD24Interface.h"

#include "Tests/HAL/Board/PanelBoardTest.h"

namespace {

using support::Read32;
using support::Write32;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HD24Interface;

class HD24InterfaceTest : public PanelBoardTest<HD24Interface> {};

TEST_F(HD24InterfaceTest, IsBuiltWithoutALinkAndWithoutHardware) {
    std::remove("/dev/fpga");
    std::remove("/dev/gpio");
    const HD24Interface board(nullptr);
    EXPECT_EQ(&board, Valen::CPInterface::getInstance());
    EXPECT_THAT(syslog.lines(), ElementsAre(error("CPCardInterface: could not open gpio!")));
}

TEST_F(HD24InterfaceTest, HasOnePanel) {
    EXPECT_EQ(1, HD24Interface(nullptr).getOledPanelCount());
}

TEST_F(HD24InterfaceTest, ThePanelIsOnItsOwnCores) {
    HD24Interface board(nullptr);
    const auto panel = board.getOledPanel(0);
    ASSERT_NE(nullptr, panel);
    EXPECT_TRUE(panel->initOk());
    EXPECT_EQ(1, descriptorsOn(screenOf("oled_spi")));
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kOlderPanel + 4), Write32(kOlderPanel, 0)));
}

TEST_F(HD24InterfaceTest, ThePanelsIndexIsIgnored) {
    HD24Interface board(nullptr);
    for (const int index : {-1, 1, 1000}) {
        EXPECT_TRUE(board.getOledPanel(index)->initOk());
    }
}

TEST_F(HD24InterfaceTest, TheOwnerOfThePanelClosesItByDestroyingIt) {
    HD24Interface board(nullptr);
    board.getOledPanel(0).reset();
    EXPECT_EQ(0, descriptorsOn(screenOf("oled_spi")));
}

TEST_F(HD24InterfaceTest, HandingOutThePanelIsLoggedForDebugging) {
    HD24Interface board(nullptr);
    board.getOledPanel(0);
    EXPECT_THAT(syslog.lines(), IsEmpty());
    logUpTo(Valen::Log::SeverityLevel::DEBUG);
    board.getOledPanel(0);
    EXPECT_THAT(syslog.lines(), ElementsAre(debug(kOledIsPresent)));
}

TEST_F(HD24InterfaceTest, APanelThatFailedIsHandedOutAllTheSame) {
    writeLayout("fpga", core("other", {1, 0x40}));
    HD24Interface board(nullptr);
    logUpTo(Valen::Log::SeverityLevel::DEBUG);
    const auto panel = board.getOledPanel(0);
    ASSERT_NE(nullptr, panel);
    EXPECT_FALSE(panel->initOk());
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug(kOledIsPresent), error("OLED: failed to get OLED regs oled_io_spi!")));
}

TEST_F(HD24InterfaceTest, APanelWithoutAScreenIsHandedOutWithItsButtons) {
    std::remove(screenOf("oled_spi").c_str());
    HD24Interface board(nullptr);
    const auto panel = board.getOledPanel(0);
    EXPECT_TRUE(panel->initOk());
    EXPECT_THAT(syslog.lines(), ElementsAre(error("OLED: failed to open OLED SPI oled_spi!")));
    registers.set32(kOlderPanel + 4, 1);
    Valen::OledPanelButtons buttons;
    EXPECT_TRUE(panel->getButtons(buttons));
    EXPECT_EQ(1, buttons.left());
}

}  // namespace
