#include "Vl/HAL/Board/CPInterface.h"

#include <array>
#include <cstring>
#include <utility>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Tests/Support/RegisterWindow/DeviceRegisterWindow.h"

namespace {

using support::Read32;
using support::Write32;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned int kLength = 0x10000;

using Registers = std::pair<volatile std::uint32_t*, unsigned int>;
const Registers kNone{nullptr, 0U};

struct SyncLayout {
    SyncLayout() {
        support::PrivateWorld::write("/dev/gpio", "");
        support::PrivateWorld::write("/sys/bus/avalon/devices/fpga/layout",
                                     core("subsys_central_sync", {1, 0x2000}) +
                                         core("spans", {0x80000005, 0x107F, 0x3000}) +
                                         core("version_only", {5}) + core("outside", {5, kLength}) +
                                         core("last", {6, kLength - 0x40}));
    }
};

/// A control processor with an FPGA whose accesses are recorded.
class CPInterfaceTest : public BoardWorld {
protected:
    SyncLayout layout;
    support::DeviceRegisterWindow registers{kLength};
    TestBoard board;
};

TEST_F(CPInterfaceTest, ConstructionTouchesNoRegisterAndLogsNothing) {
    EXPECT_THAT(registers.accesses(), IsEmpty());
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(CPInterfaceTest, TheTimestampIsTheSyncWord) {
    registers.set32(0x2000 + 52, 0x12345678);
    EXPECT_EQ(0x12345678U, board.getTimestamp());
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(0x2000 + 52)));
}

TEST_F(CPInterfaceTest, ReadsTheWordAroundAnyOffset) {
    registers.set32(0x10, 0xAABBCCDD);
    unsigned int value = 0;
    EXPECT_TRUE(board.readFPGA(0x13, value));
    EXPECT_EQ(0xAABBCCDDU, value);
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(0x10)));
}

TEST_F(CPInterfaceTest, WritesTheWordAroundAnyOffset) {
    EXPECT_TRUE(board.writeFPGA(0x16, 0x11223344));
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(0x14, 0x11223344)));
}

TEST_F(CPInterfaceTest, NothingIsReadOrWrittenBehindTheLastWord) {
    unsigned int value = 7;
    EXPECT_FALSE(board.readFPGA(kLength, value));
    EXPECT_FALSE(board.readFPGA(0xFFFFFFFF, value));
    EXPECT_FALSE(board.writeFPGA(kLength, 1));
    EXPECT_EQ(7U, value);
    EXPECT_THAT(registers.accesses(), IsEmpty());
    EXPECT_TRUE(board.readFPGA(kLength - 1, value));
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kLength - 4)));
}

TEST_F(CPInterfaceTest, CountedReadsAreOneAccessAWordIntoAnyBuffer) {
    registers.set32(0x20, 0x04030201);
    registers.set32(0x24, 0x08070605);
    std::array<unsigned char, 10> buffer{};
    EXPECT_TRUE(board.readFPGA(0x23, buffer.data() + 1, 2));
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(0x20), Read32(0x24)));
    const std::array<std::uint32_t, 2> words = {0x04030201, 0x08070605};
    EXPECT_EQ(0, std::memcmp(words.data(), buffer.data() + 1, sizeof words));
    EXPECT_EQ(0, buffer.front());
    EXPECT_EQ(0, buffer.back());
}

TEST_F(CPInterfaceTest, CountedWritesAreOneAccessAWordFromAnyBuffer) {
    const std::array<std::uint32_t, 2> words = {0x04030201, 0x08070605};
    std::array<unsigned char, 9> buffer{};
    std::memcpy(buffer.data() + 1, words.data(), sizeof words);
    EXPECT_TRUE(board.writeFPGA(0x21, buffer.data() + 1, 2));
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(0x20, 0x04030201), Write32(0x24, 0x08070605)));
}

TEST_F(CPInterfaceTest, CountedAccessOfNoWordsTouchesNothing) {
    EXPECT_TRUE(board.readFPGA(0x20, nullptr, 0));
    EXPECT_TRUE(board.writeFPGA(0x20, nullptr, 0));
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

TEST_F(CPInterfaceTest, CountedAccessStopsAtTheLastWordAndReportsSuccessOnPurpose) {
    registers.set32(kLength - 4, 9);
    std::array<std::uint32_t, 3> words = {1, 2, 3};
    EXPECT_TRUE(board.readFPGA(kLength - 4, words.data(), 3));
    EXPECT_THAT(words, ElementsAre(9, 2, 3));
    EXPECT_TRUE(board.writeFPGA(kLength - 4, words.data(), 0xFFFFFFFF));
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kLength - 4), Write32(kLength - 4, 9)));
}

TEST_F(CPInterfaceTest, CoreAddressesComeFromTheFpgasLayout) {
    unsigned int address = 0;
    EXPECT_EQ(1, board.getCoreAddress("last", address, 1, 6, 6));
    EXPECT_EQ(kLength - 0x40, address);
    EXPECT_EQ(1, board.getCoreAddress("spans", address, 2, -1, -1));
    EXPECT_EQ(0x3000U, address);
    EXPECT_EQ(-4, board.getCoreAddress("last", address, 1, 7, 9));
    EXPECT_EQ(-7, board.getCoreAddress("last", address, 2, -1, -1));
    EXPECT_EQ(-5, board.getCoreAddress("missing", address, 1, -1, -1));
}

TEST_F(CPInterfaceTest, OneVersionIsBothBounds) {
    unsigned int address = 0;
    EXPECT_EQ(1, board.getCoreAddress("last", address, 1, 6));
    EXPECT_EQ(kLength - 0x40, address);
    EXPECT_EQ(-4, board.getCoreAddress("last", address, 1, 5));
    EXPECT_EQ(-4, board.getCoreAddress("last", address, 1, 7));
    EXPECT_EQ(1, board.getCoreAddress("last", address, 1, -1));
}

TEST_F(CPInterfaceTest, AFailedCoreAddressLosesItsLowSixBitsOnPurpose) {
    unsigned int address = 0xFF;
    EXPECT_EQ(-5, board.getCoreAddress("missing", address, 1, -1));
    EXPECT_EQ(0xC0U, address);
}

TEST_F(CPInterfaceTest, CoreRegistersAreASpansFirstRegisterAndTheCoresVersion) {
    const auto [first, version] = board.getCoreRegs("spans", 0);
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(0x80000005U, version);
    first[1] = 5;
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(0x1044, 5)));
    registers.clearAccesses();
    const auto [second, sameVersion] = board.getCoreRegs("spans", 1);
    ASSERT_NE(nullptr, second);
    EXPECT_EQ(0x80000005U, sameVersion);
    second[0] = 6;
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(0x3000, 6)));
}

TEST_F(CPInterfaceTest, TheLastCoreOfTheRegisterSpaceHasRegisters) {
    const auto [first, version] = board.getCoreRegs("last", 0);
    ASSERT_NE(nullptr, first);
    first[15] = 1;
    EXPECT_EQ(6U, version);
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(kLength - 4, 1)));
}

TEST_F(CPInterfaceTest, CoresWithoutRegistersAreNotFound) {
    EXPECT_EQ(kNone, board.getCoreRegs("missing", 0));
    EXPECT_EQ(kNone, board.getCoreRegs("version_only", 0));
    EXPECT_EQ(kNone, board.getCoreRegs("spans", 2));
    EXPECT_EQ(kNone, board.getCoreRegs("outside", 0));
}

TEST_F(CPInterfaceTest, AbsurdSpansAreNotFound) {
    EXPECT_EQ(kNone, board.getCoreRegs("spans", -1));
    EXPECT_EQ(kNone, board.getCoreRegs("spans", 0x7FFFFFFF));
    EXPECT_EQ(kNone, board.getCoreRegs("spans", -0x7FFFFFFF - 1));
}

TEST_F(CPInterfaceTest, AMissingLayoutIsSaidOnce) {
    std::remove("/sys/bus/avalon/devices/fpga/layout");
    EXPECT_EQ(kNone, board.getCoreRegs("spans", 0));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(error("CPCardInterface: could not find: /sys/bus/avalon/devices/fpga/layout")));
}

}  // namespace
