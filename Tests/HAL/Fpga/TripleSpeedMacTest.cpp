#include "Vl/HAL/Fpga/TripleSpeedMac.h"

#include <chrono>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/SimulatedTime.h"
#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"

namespace {

using namespace std::chrono_literals;
using support::Read32;
using support::Write32;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::CPInterface;

constexpr unsigned kBase = 0x2000;
constexpr unsigned kNowhere = 0x10000;

class TripleSpeedMacTest : public BoardWorld {
protected:
    TripleSpeedMacTest() { syslog.lines(); }  // what the bare board misses

    support::DeviceRegisterWindow registers;
    TestBoard board;
    SimulatedTime time;
};

TEST_F(TripleSpeedMacTest, AResetThatIsDoneAtOnceIsOneWriteAndOneRead) {
    registers.onRead(kBase + 8, {0xFFFFDFFF});
    EXPECT_TRUE(Valen::HAL::tseMacReset(board, kBase));
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(kBase + 8, 0x2000), Read32(kBase + 8)));
    EXPECT_THAT(time.sleeps, IsEmpty());
}

TEST_F(TripleSpeedMacTest, TheEndOfAResetIsWaitedFor) {
    registers.onRead(kBase + 8, {0x2000, 0xFFFFFFFF, 0});
    EXPECT_TRUE(Valen::HAL::tseMacReset(board, kBase));
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(kBase + 8, 0x2000), Read32(kBase + 8),
                                                  Read32(kBase + 8), Read32(kBase + 8)));
    EXPECT_THAT(time.sleeps, ElementsAre(5us, 5us));
}

TEST_F(TripleSpeedMacTest, AResetWithoutEndIsGivenUpAfterSixMilliseconds) {
    logUpTo(Valen::Log::SeverityLevel::DEBUG);
    EXPECT_FALSE(Valen::HAL::tseMacReset(board, kBase));
    EXPECT_EQ(6ms, time.elapsed);
    EXPECT_EQ(1200U, time.sleeps.size());
    EXPECT_THAT(time.sleeps, Each(5us));
    EXPECT_EQ(1202U, registers.accesses().size());
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: tseMacReset: Timeout")));
}

TEST_F(TripleSpeedMacTest, ATimeoutIsADebugMessage) {
    EXPECT_FALSE(Valen::HAL::tseMacReset(board, kBase));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(TripleSpeedMacTest, WithoutRegistersAResetNeverEnds) {
    EXPECT_FALSE(Valen::HAL::tseMacReset(board, kNowhere));
    EXPECT_EQ(6ms, time.elapsed);
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

TEST_F(TripleSpeedMacTest, NormalFramesSetTheFifoThresholdsToo) {
    Valen::HAL::tseMacConfigure(board, kBase, 0x0001CB4A, 0x17231C20, false, false);
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Write32(kBase + 12, 0x17231C20), Write32(kBase + 16, 0x0001CB4A),
                            Write32(kBase + 20, 1600), Write32(kBase + 92, 11), Write32(kBase + 28, 1663),
                            Write32(kBase + 32, 0), Write32(kBase + 36, 2032), Write32(kBase + 40, 0),
                            Write32(kBase + 44, 8), Write32(kBase + 48, 8), Write32(kBase + 52, 8),
                            Write32(kBase + 56, 8), Write32(kBase + 24, 25), Write32(kBase + 8, 0x01800093)));
}

TEST_F(TripleSpeedMacTest, JumboFramesOnlySetLengthAndGap) {
    Valen::HAL::tseMacConfigure(board, kBase, 2, 1, true, false);
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(kBase + 12, 1), Write32(kBase + 16, 2),
                                                  Write32(kBase + 20, 9100), Write32(kBase + 92, 11),
                                                  Write32(kBase + 24, 25), Write32(kBase + 8, 0x01800093)));
}

TEST_F(TripleSpeedMacTest, TheExtraWordComesLast) {
    Valen::HAL::tseMacConfigure(board, kBase, 2, 1, true, true);
    ASSERT_EQ(7U, registers.accesses().size());
    EXPECT_THAT(registers.accesses().back(), Write32(kBase + 592, 3));
    registers.clearAccesses();
    Valen::HAL::tseMacConfigure(board, kBase, 2, 1, false, true);
    ASSERT_EQ(15U, registers.accesses().size());
    EXPECT_THAT(registers.accesses().back(), Write32(kBase + 592, 3));
}

TEST_F(TripleSpeedMacTest, EverySpeedIsOneWrite) {
    for (const int speed : {1, 3, 2, 0, -1}) {
        Valen::HAL::tseMacSetSpeed(board, kBase, static_cast<CPInterface::EthSpeed>(speed));
    }
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Write32(kBase + 8, 0x03800093), Write32(kBase + 8, 0x0180009B),
                            Write32(kBase + 8, 0x01800093), Write32(kBase + 8, 0x01800093),
                            Write32(kBase + 8, 0x01800093)));
}

}  // namespace
