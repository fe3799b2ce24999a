#include "Vl/HAL/Board/HD24Interface.h"

#include <memory>

#include "Tests/HAL/Board/VariantWorld.h"
#include "Vl/HAL/Board/CPLinkInterface.h"
#include "Vl/HAL/Chips/EthernetPhy88E1510.h"
#include "Vl/HAL/Panel/OledPanelButtons.h"
#include "Vl/HAL/Panel/OledPanelInterface.h"

namespace {

using support::Read32;
using support::Write32;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HD24Interface;
using Valen::Log::SeverityLevel::DEBUG;

class HD24InterfaceTest : public VariantWorld {};

TEST_F(HD24InterfaceTest, IsBuiltWithoutAWordOnAHealthyBoard) {
    const HD24Interface board(nullptr);
    EXPECT_EQ(&board, Valen::CPInterface::getInstance());
    EXPECT_THAT(syslog.lines(), IsEmpty());
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

TEST_F(HD24InterfaceTest, IsBuiltWithoutALinkAndWithoutHardware) {
    removeEverything();
    const HD24Interface board(nullptr);
    EXPECT_EQ(&board, Valen::CPInterface::getInstance());
    EXPECT_THAT(syslog.lines(), ElementsAre(error("CPCardInterface: could not open gpio!")));
    EXPECT_THAT(kernel.calls, IsEmpty());
}

TEST_F(HD24InterfaceTest, TakesThePanelOutOfResetByTheFourthLineOfItsBlock) {
    const HD24Interface board(nullptr);
    EXPECT_THAT(kernel.calls, ElementsAre("gpio 7d06 c3", "gpio 7d04 10100c3", "gpio 7d07 c3"));
}

TEST_F(HD24InterfaceTest, TheLineIsFreedEvenWhenItIsRefused) {
    kernel.failing = {"gpio 7d06", "gpio 7d04"};
    const HD24Interface board(nullptr);
    EXPECT_THAT(kernel.calls, ElementsAre("gpio 7d06 c3", "gpio 7d04 10100c3", "gpio 7d07 c3"));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(HD24InterfaceTest, WithoutThePanelsBlockNoOtherLineIsDriven) {
    support::PrivateWorld::write("/sys/class/gpio/gpiochip192/label", "other_pio\n");
    const HD24Interface board(nullptr);
    EXPECT_THAT(kernel.calls, IsEmpty());
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(HD24InterfaceTest, ClosesEverythingAtTheEnd) {
    const int before = descriptors();
    { const HD24Interface board(nullptr); }
    EXPECT_EQ(before, descriptors());
    EXPECT_EQ(nullptr, Valen::CPInterface::getInstance());
}

TEST_F(HD24InterfaceTest, ALowByteOfA0Is32Degrees) {
    HD24Interface board(nullptr);
    registers.set32(kMiscPio, 0xFFFFFFA0);
    int celsius = 0;
    EXPECT_TRUE(board.getFPGATemperature(celsius));
    EXPECT_EQ(32, celsius);
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kMiscPio)));
}

TEST_F(HD24InterfaceTest, TheTemperatureIsTheLowByteMinus128) {
    HD24Interface board(nullptr);
    for (unsigned int byte = 0; byte <= 0xFF; ++byte) {
        registers.set32(kMiscPio, 0x12345600 | byte);
        int celsius = 1000;
        EXPECT_TRUE(board.getFPGATemperature(celsius));
        EXPECT_EQ(static_cast<int>(byte) - 128, celsius);
    }
}

TEST_F(HD24InterfaceTest, TheMiscellaneousRegisterIsReadWhole) {
    HD24Interface board(nullptr);
    registers.set32(kMiscPio, 0x89ABCDEF);
    Valen::hd24_misc_pio_ctrl misc{1};
    EXPECT_TRUE(board.readMiscPio(misc));
    EXPECT_EQ(0x89ABCDEF, misc.value);
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kMiscPio)));
}

void expectNoMiscPio() {
    HD24Interface board(nullptr);
    int celsius = 1000;
    EXPECT_FALSE(board.getFPGATemperature(celsius));
    EXPECT_EQ(1000, celsius);
    Valen::hd24_misc_pio_ctrl misc{1};
    EXPECT_FALSE(board.readMiscPio(misc));
    EXPECT_EQ(0u, misc.value);
}

TEST_F(HD24InterfaceTest, WithoutItsCoreTheMiscellaneousRegisterReadsAsZeroAndFails) {
    removeCore("misc_pio");
    expectNoMiscPio();
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(HD24InterfaceTest, WithoutTheFpgaTheMiscellaneousRegisterFails) {
    std::remove("/dev/fpga");
    expectNoMiscPio();
}

TEST_F(HD24InterfaceTest, ThePhyIsOnTheBusOfTheEthernetCore) {
    HD24Interface board(nullptr);
    const auto phy = board.getPhy(3);
    EXPECT_NE(nullptr, dynamic_cast<Valen::HAL::EthernetPhy88E1510*>(phy.get()));
    EXPECT_EQ(0, phy->getPhyId1());
    EXPECT_THAT(registers.accesses(), Contains(Write32(kMdio, 0x60000000 | 3U << 23 | 2U << 18)));
    EXPECT_NE(phy, board.getPhy(3));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(HD24InterfaceTest, APhyWithoutABusFailsItsOwnChecks) {
    removeCore("ethernet_mdio");
    HD24Interface board(nullptr);
    const auto phy = board.getPhy(3);
    ASSERT_NE(nullptr, phy);
    EXPECT_EQ(-1, phy->getPhyId1());
    EXPECT_FALSE(phy->initUserEth());
    EXPECT_THAT(syslog.texts(),
                ElementsAre(testing::StartsWith("CPCardInterface: failed to get MDIO for phyID 3 (mdio @ ")));
}

TEST_F(HD24InterfaceTest, TheConfigurationPhyIsAtAddressZeroBehindTheInterfaceAsked) {
    Valen::CPLinkInterface link;
    HD24Interface board(&link);
    kernel.calls.clear();
    kernel.phyWord = 0x0141;
    const auto phy = board.getConfigEthPhy(1);
    EXPECT_NE(nullptr, dynamic_cast<Valen::HAL::EthernetPhy88E1510*>(phy.get()));
    EXPECT_EQ(0x0141, phy->getPhyId1());
    EXPECT_THAT(kernel.calls, ElementsAre("eth1 own", "eth1 phy 0 read 2"));
}

TEST_F(HD24InterfaceTest, WithoutALinkTheConfigurationPhyFailsItsOwnChecks) {
    HD24Interface board(nullptr);
    const auto phy = board.getConfigEthPhy(0);
    ASSERT_NE(nullptr, phy);
    EXPECT_EQ(-1, phy->getPhyId1());
}

TEST_F(HD24InterfaceTest, TellsNoCardTemperature) {
    HD24Interface board(nullptr);
    unsigned int value = 1000;
    EXPECT_EQ(-7, board.GetCardTemperature(value, Enums::Temperature::Board));
    EXPECT_EQ(-7, board.GetCardTemperature(value, static_cast<Enums::Temperature::Type>(99)));
    EXPECT_EQ(1000u, value);
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
    logUpTo(DEBUG);
    board.getOledPanel(0);
    EXPECT_THAT(syslog.lines(), ElementsAre(debug(kOledIsPresent)));
}

TEST_F(HD24InterfaceTest, APanelThatFailedIsHandedOutAllTheSame) {
    removeCore("oled_io_spi");
    HD24Interface board(nullptr);
    logUpTo(DEBUG);
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
