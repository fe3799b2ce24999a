#include "Tools/boardsim/Board/BoardRegisters.h"

#include <gmock/gmock.h>

#include "Tests/boardsim/Models/ModelTime.h"
#include "Tools/boardsim/Board/MdioTrace.h"

namespace {

using boardsim::BoardRegisters;
using boardsim::MdioFrame;
using boardsim::parseFault;
using testing::HasSubstr;
using namespace std::chrono_literals;

class BoardRegistersTest : public testing::Test {
protected:
    std::string nameAt(std::uint64_t offset) const {
        const boardsim::PlacedBlock* block = registers.find(offset);
        return block ? block->name : "";
    }

    std::uint64_t mdio(std::uint32_t frame) {
        boardsim::RegisterBlock& master = *registers.find(0x800)->block;
        EXPECT_FALSE(master.write(0, 4, frame));
        time.pass(1ms);
        return master.read(0, 4).value;
    }

    models::ModelTime time;
    BoardRegisters registers{boardsim::orcaBoard(), time.clock()};
};

TEST_F(BoardRegistersTest, BlocksAreFoundByEveryByteOfTheirs) {
    EXPECT_EQ("", nameAt(0x7FF));
    EXPECT_EQ("ethernet_mdio", nameAt(0x800));
    EXPECT_EQ("ethernet_mdio", nameAt(0x803));
    EXPECT_EQ("", nameAt(0x804));
    EXPECT_EQ("subsys_hps_eth_mac", nameAt(0x23FF));
    EXPECT_EQ("subsys_hps_ext_spi", nameAt(0x2400));
    EXPECT_EQ("", nameAt(0x100000000 + 0x800)) << "the upper half of an offset counts, too";
}

TEST_F(BoardRegistersTest, OnlyBlocksThatActAreInTheRanges) {
    registers.add({"panel", 0x1000, 0x40, registers.find(0x800)->block});
    EXPECT_EQ("panel", nameAt(0x1004));
    EXPECT_EQ("800-803,2000-23ff,2400-241f", registers.actingRanges());
}

TEST_F(BoardRegistersTest, TheMdioBusHasOnePhyOfEachKind) {
    EXPECT_EQ(0x2000U, mdio(0x60080000));
    EXPECT_EQ(0x0141U, mdio(0x60880000));
    EXPECT_EQ(0xFFFFU, mdio(0x61080000));
}

TEST_F(BoardRegistersTest, AWordOnTheSpiBusComesBackWithTheNext) {
    boardsim::RegisterBlock& spi = *registers.find(0x2400)->block;
    for (const std::uint32_t word : {7U, 8U}) {
        spi.write(0x4, 4, word);
        time.pass(1ms);
    }
    EXPECT_EQ(0U, spi.read(0x0, 4).value);
    spi.write(0x4, 4, 9);
    time.pass(1ms);
    EXPECT_EQ(8U, spi.read(0x0, 4).value);
}

TEST_F(BoardRegistersTest, EveryDeviceCanMisbehave) {
    EXPECT_TRUE(registers.apply(parseFault("mdio:ethernet_mdio@0:no-answer")));
    EXPECT_EQ(0xFFFFU, mdio(0x60080000));
    EXPECT_EQ(0x0141U, mdio(0x60880000));

    EXPECT_TRUE(registers.apply(parseFault("mdio:ethernet_mdio@1:link-down")));
    time.pass(1h);
    EXPECT_EQ(0U, mdio(0x60C40000)) << "copper status";

    EXPECT_TRUE(registers.apply(parseFault("mac:subsys_hps_eth_mac:reset")));
    boardsim::RegisterBlock& mac = *registers.find(0x2000)->block;
    mac.write(0x8, 4, 0x2000);
    time.pass(1h);
    EXPECT_EQ(0x2000U, mac.read(0x8, 4).value);

    EXPECT_TRUE(registers.apply(parseFault("mdio:ethernet_mdio:busy")));
    EXPECT_EQ(0xC0000000U, mdio(0x60080000) & 0xFFFF0000);
}

TEST_F(BoardRegistersTest, OtherKindsOfFaultsAreNotItsAffair) {
    EXPECT_FALSE(registers.apply(parseFault("i2c:fan@0x48:nack")));
}

TEST_F(BoardRegistersTest, AFaultThatNoDeviceHasIsRefusedWithThoseThatThereAre) {
    for (const char* text :
         {"mdio:ethernet_mdio@7:no-answer", "mdio:ethernet_mdio:link-down", "mdio:ethernet_mdio:busy=3"}) {
        try {
            registers.apply(parseFault(text));
            ADD_FAILURE() << text;
        } catch (const std::invalid_argument& error) {
            EXPECT_THAT(error.what(), HasSubstr(text));
            EXPECT_THAT(error.what(), HasSubstr("mdio:ethernet_mdio:busy, mdio:ethernet_mdio@0:no-answer"));
        }
    }
}

TEST(BareBoardRegistersTest, PartsThatAreAbsentHaveNoBlocks) {
    boardsim::BoardDescription bare;
    models::ModelTime time;
    EXPECT_EQ("", BoardRegisters(bare, time.clock()).actingRanges());

    boardsim::BoardDescription dangling = boardsim::orcaBoard();
    dangling.fpga->cores.clear();
    BoardRegisters registers(dangling, time.clock());
    EXPECT_EQ("", registers.actingRanges());
    EXPECT_FALSE(registers.apply(parseFault("mdio:ethernet_mdio:busy"))) << "there is none to be busy";
}

TEST(MdioTraceTest, TellsWhatIsOnTheWires) {
    EXPECT_EQ("mdio read phy 1 reg 17 0xac00", boardsim::describe(MdioFrame{false, 1, 17, 0xAC00, true}));
    EXPECT_EQ("mdio write phy 31 reg 0 0x0001", boardsim::describe(MdioFrame{true, 31, 0, 1, true}));
    EXPECT_EQ("mdio read phy 7 reg 2 0xffff, no answer",
              boardsim::describe(MdioFrame{false, 7, 2, 0xFFFF, false}));
}

}  // namespace
