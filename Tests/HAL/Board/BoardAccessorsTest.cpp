// What the control processor hands out: MDIO and SPI masters, and the video chip.
#include <filesystem>

#include "Tests/HAL/Board/FpgaBoard.h"
#include "Vl/HAL/Bus/AlteraSpi.h"
#include "Vl/HAL/Bus/FakeMdio.h"
#include "Vl/HAL/Bus/FpgaMdio.h"
#include "Vl/HAL/Chips/ADVInterface.h"

namespace {

using support::Read32;
using support::Write32;
using testing::ElementsAre;
using testing::IsEmpty;

class BoardAccessorsTest : public FpgaBoard {
protected:
    BoardAccessorsTest()
        : FpgaBoard(core("mdio", {7, 0x307F}) + core("spi", {7, 0x40C0}) + core("outside", {7, kLength}) +
                    core("bare", {7})) {}
};

TEST_F(BoardAccessorsTest, AnMdioAccessorWritesFramesIntoTheCoreThatWasFound) {
    board.initMdio("mdio");
    const auto mdio = board.getMdio(1);
    EXPECT_TRUE(mdio->setReg(4, 0x01E1));
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(0x3040), Write32(0x3040, 0x509201E1)));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(BoardAccessorsTest, EveryMdioAccessorIsANewOne) {
    board.initMdio("mdio");
    EXPECT_NE(board.getMdio(0), board.getMdio(0));
}

TEST_F(BoardAccessorsTest, WithoutAnMdioCoreAccessorsFail) {
    const auto mdio = board.getMdio(3);
    ASSERT_NE(nullptr, mdio);
    EXPECT_FALSE(mdio->setReg(4, 1));
    EXPECT_EQ(-1, mdio->getReg(4));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(error("CPCardInterface: failed to get MDIO for phyID 3 (mdio @ (nil))")));
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

TEST_F(BoardAccessorsTest, WithoutAPhyAddressAccessorsFailAndTheCoreIsNamed) {
    board.initMdio("mdio");
    EXPECT_FALSE(board.getMdio(-1)->setReg(4, 1));
    const auto lines = syslog.lines();
    ASSERT_EQ(1U, lines.size());
    EXPECT_THAT(lines[0].text, testing::MatchesRegex(
                                   R"(CPCardInterface: failed to get MDIO for phyID -1 \(mdio @ 0x.*40\))"));
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

TEST_F(BoardAccessorsTest, AnMdioCoreThatIsNotThereIsNone) {
    for (const char* name : {"missing", "outside", "bare"}) {
        board.initMdio(name);
        syslog.lines();
        EXPECT_FALSE(board.getMdio(0)->setReg(4, 1)) << name;
        EXPECT_EQ("CPCardInterface: failed to get MDIO for phyID 0 (mdio @ (nil))", syslog.texts().back());
    }
}

TEST_F(BoardAccessorsTest, AnSpiMasterIsOnTheCoresAddress) {
    const auto spi = board.getSpiCore("spi");
    ASSERT_NE(nullptr, spi);
    EXPECT_TRUE(spi->selectSlave(1));
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(0x40CC, 0x401)));
    EXPECT_NE(spi, board.getSpiCore("spi"));
}

TEST_F(BoardAccessorsTest, WithoutItsCoreThereIsNoSpiMaster) {
    EXPECT_EQ(nullptr, board.getSpiCore("missing"));
    EXPECT_EQ(nullptr, board.getSpiCore("bare"));
}

TEST_F(BoardAccessorsTest, TheVideoChipIsOpenedOnceAndShared) {
    constexpr const char* kChip = "/sys/bus/avalon/devices/spi_videosync_out/spi1.5/adv_regs";
    support::PrivateWorld::write(kChip, "\x11\x22");
    const auto chip = board.getADV();
    ASSERT_NE(nullptr, chip);
    EXPECT_EQ(0x22, chip->getReg(1));
    EXPECT_EQ(chip, board.getADV());
    EXPECT_EQ(1, descriptorsOn(kChip));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug(std::string("CPCardInterface: ADV SPI found: ") + kChip)));
}

TEST_F(BoardAccessorsTest, AVideoChipThatIsMissingIsLookedForAgain) {
    EXPECT_EQ(nullptr, board.getADV());
    EXPECT_THAT(syslog.lines(), ElementsAre(error("CPCardInterface: ADV SPI not found!")));
    std::filesystem::create_directories("/sys/bus/avalon/devices/spi_videosync_out/spi1.5");
    EXPECT_NE(nullptr, board.getADV());
}

}  // namespace
