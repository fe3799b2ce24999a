#include <array>
#include <memory>
#include <utility>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Vl/HAL/Panel/OledPanelInterface.h"

namespace {

using testing::ElementsAre;
using Valen::CPInterface;

const std::pair<volatile std::uint32_t*, unsigned int> kNone{nullptr, 0U};

/// A control processor with nothing around it.
class BareCPInterfaceTest : public BoardWorld {};

TEST_F(BareCPInterfaceTest, MissesOnlyItsGpio) {
    logEverything();
    const TestBoard board;
    EXPECT_THAT(syslog.lines(), ElementsAre(error("CPCardInterface: could not open gpio!")));
}

TEST_F(BareCPInterfaceTest, LooksForCoresOnlyWhenTheFpgaIsThere) {
    support::PrivateWorld::write("/dev/gpio", "");
    support::PrivateWorld::write("/dev/fpga", "registers");
    const TestBoard board;
    EXPECT_THAT(syslog.lines(),
                ElementsAre(error("CPCardInterface: could not find: /sys/bus/avalon/devices/fpga/layout")));
}

TEST_F(BareCPInterfaceTest, HasNoRegisters) {
    TestBoard board;
    unsigned int value = 7;
    EXPECT_FALSE(board.readFPGA(0, value));
    EXPECT_EQ(7U, value);
    EXPECT_FALSE(board.writeFPGA(0, 1));
    EXPECT_EQ(0U, board.getTimestamp());
}

TEST_F(BareCPInterfaceTest, CountedAccessReportsSuccessWithoutRegistersOnPurpose) {
    TestBoard board;
    std::array<std::uint32_t, 2> words = {7, 8};
    EXPECT_TRUE(board.readFPGA(0, words.data(), 2));
    EXPECT_THAT(words, ElementsAre(7, 8));
    EXPECT_TRUE(board.writeFPGA(0, words.data(), 2));
}

TEST_F(BareCPInterfaceTest, FindsNoRegistersOfACoreThatIsInTheLayout) {
    writeLayout("fpga", core("x", {5, 0x40}));
    TestBoard board;
    EXPECT_EQ(kNone, board.getCoreRegs("x", 0));
    unsigned int address = 0;
    EXPECT_EQ(1, board.getCoreAddress("x", address, 1, -1));
    EXPECT_EQ(0x40U, address);
}

TEST_F(BareCPInterfaceTest, HasNoPanels) {
    TestBoard board;
    EXPECT_EQ(0, board.getOledPanelCount());
    EXPECT_EQ(nullptr, board.getOledPanel(0));
}

TEST_F(BareCPInterfaceTest, IsReachableWhileItLives) {
    EXPECT_EQ(nullptr, CPInterface::getInstance());
    auto board = std::make_unique<TestBoard>();
    EXPECT_EQ(board.get(), CPInterface::getInstance());
    board.reset();
    EXPECT_EQ(nullptr, CPInterface::getInstance());
}

TEST_F(BareCPInterfaceTest, TheOneBuiltLastIsReachable) {
    const TestBoard first;
    const TestBoard second;
    EXPECT_EQ(&second, CPInterface::getInstance());
}

TEST_F(BareCPInterfaceTest, AnyDestructionForgetsTheInstanceOnPurpose) {
    const TestBoard first;
    auto earlier = std::make_unique<TestBoard>();
    const TestBoard last;
    earlier.reset();
    EXPECT_EQ(nullptr, CPInterface::getInstance());
}

TEST_F(BareCPInterfaceTest, ClosesItsDevicesAtTheEnd) {
    support::PrivateWorld::write("/dev/gpio", "");
    support::PrivateWorld::write("/dev/fpga", "registers");
    auto board = std::make_unique<TestBoard>();
    EXPECT_EQ(1, descriptorsOn("/dev/gpio"));
    EXPECT_EQ(1, descriptorsOn("/dev/fpga"));
    std::unique_ptr<Valen::TimestampInterface> base = std::move(board);
    base.reset();
    EXPECT_EQ(0, descriptorsOn("/dev/gpio"));
    EXPECT_EQ(0, descriptorsOn("/dev/fpga"));
}

}  // namespace
