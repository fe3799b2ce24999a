#include "Vl/HAL/Bus/AlteraSpi.h"

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"

namespace {

using support::Read32;
using support::Write32;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::AlteraSpi;

constexpr unsigned long kBase = 0x1040;
constexpr unsigned kTxData = 0x1044;
constexpr unsigned kStatus = 0x1048;
constexpr unsigned kControl = 0x104C;
constexpr unsigned kReady = 0x40;

class AlteraSpiTest : public BoardWorld {
protected:
    support::DeviceRegisterWindow registers;
    TestBoard board;
    AlteraSpi spi{&board, kBase};
};

TEST_F(AlteraSpiTest, ConstructionTouchesNothing) {
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

TEST_F(AlteraSpiTest, SelectsAtOnceHoweverBusyTheCoreIs) {
    EXPECT_TRUE(spi.selectSlave(5));
    EXPECT_TRUE(spi.selectSlave(0));
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(kControl, 0x405), Write32(kControl, 0x400)));
}

TEST_F(AlteraSpiTest, SendsAWordOnceTheTransmitterIsReady) {
    registers.onRead(kStatus, {0, 0xFFFFFFBF, kReady});
    EXPECT_TRUE(spi.writeWord(0xDEADBEEF));
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Read32(kStatus), Read32(kStatus), Read32(kStatus), Write32(kTxData, 0xDEADBEEF)));
}

TEST_F(AlteraSpiTest, LetsTheSlaveGoOnceTheTransmitterIsReady) {
    registers.onRead(kStatus, {0x20, 0xE0});
    EXPECT_TRUE(spi.unselect());
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kStatus), Read32(kStatus), Write32(kControl, 0)));
}

TEST_F(AlteraSpiTest, TheWaitAnswersTheStatusThatEndedIt) {
    registers.onRead(kStatus, {0x0, 0x1260});
    EXPECT_EQ(0x1260U, spi.waitReady());
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kStatus), Read32(kStatus)));
}

TEST_F(AlteraSpiTest, WaitsWithoutATimeOutOnPurpose) {
    std::vector<std::uint64_t> states(20000, 0);
    states.push_back(kReady);
    registers.onRead(kStatus, states);
    EXPECT_TRUE(spi.writeWord(1));
    EXPECT_EQ(20002U, registers.accesses().size());
}

TEST_F(AlteraSpiTest, OnlyTheLow32BitsOfTheBaseCount) {
    AlteraSpi far(&board, 0x700000000 + kBase);
    EXPECT_TRUE(far.selectSlave(1));
    AlteraSpi wrapping(&board, 0xFFFFFFF8);
    EXPECT_TRUE(wrapping.selectSlave(2));
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(kControl, 0x401), Write32(0x4, 0x402)));
}

TEST_F(AlteraSpiTest, IsUsedAsAnSpiBus) {
    registers.set32(kStatus, kReady);
    Valen::SpiBus& bus = spi;
    EXPECT_TRUE(bus.selectSlave(1));
    EXPECT_TRUE(bus.writeWord(0x55));
    EXPECT_TRUE(bus.unselect());
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Write32(kControl, 0x401), Read32(kStatus), Write32(kTxData, 0x55),
                            Read32(kStatus), Write32(kControl, 0)));
}

TEST_F(AlteraSpiTest, WithoutRegistersNothingIsWaitedForAndEverythingFails) {
    AlteraSpi none(&board, 0x10000);
    EXPECT_FALSE(none.selectSlave(1));
    EXPECT_FALSE(none.writeWord(1));
    EXPECT_FALSE(none.unselect());
    EXPECT_EQ(0U, none.waitReady());
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

}  // namespace
