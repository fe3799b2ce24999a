// The drivers of MDIO, PHYs, MAC and SPI against the virtual board's own idea of those devices.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

const std::string kDrivers = REGISTER_DEVICES;

/// The frames that wrote to PHYs, without time stamps: "phy 0 reg 25 0x0555".
std::vector<std::string> phyWrites(const BoardRun& run) {
    const std::string start = "mdio write ";
    std::vector<std::string> writes;
    for (const std::string& line : run.trace) {
        if (const std::size_t found = line.find(start); found != std::string::npos) {
            writes.push_back(line.substr(found + start.size()));
        }
    }
    return writes;
}

TEST(RegisterDevicesTest, TheDp83867IsSetUpAndRunsAtEachSpeed) {
    const BoardRun run = board().traced().run({kDrivers, "dp83867"});
    EXPECT_EQ("2000 a231\ninit ok\nspeed 1 ok, is 1\nspeed 2 ok, is 2\nspeed 3 ok, is 3\n", run.out);
    EXPECT_THAT(phyWrites(run), Contains("phy 0 reg 14 0x0015")) << "rate adaptation is off";
    EXPECT_THAT(phyWrites(run), Contains("phy 0 reg 25 0x0555")) << "LEDs are off";
    EXPECT_THAT(run.trace, Each(Not(HasSubstr("refused"))));
}

TEST(RegisterDevicesTest, The88e1510IsSetUpAndRunsAtEachSpeed) {
    const BoardRun run = board().traced().run({kDrivers, "88e1510"});
    EXPECT_EQ("141 dd1\ninit ok\nspeed 1 ok, is 1\nspeed 2 ok, is 2\nspeed 3 ok, is 3\n", run.out);
    EXPECT_THAT(phyWrites(run), Contains("phy 1 reg 16 0x0888")) << "LEDs are off";
    EXPECT_THAT(run.trace, Each(Not(HasSubstr("refused"))));
}

TEST(RegisterDevicesTest, TheUserPortComesUp) {
    const BoardRun run = board().traced().run({kDrivers, "user-port"});
    EXPECT_EQ("user port ok\n", run.out);
    EXPECT_THAT(run.trace, Contains(HasSubstr("fpga write 0x2250 32 0x00000003")));
    EXPECT_THAT(run.trace, Contains(HasSubstr("fpga write 0x2008 32 0x01800093")));
    EXPECT_THAT(run.trace, Each(Not(HasSubstr("refused"))));
}

TEST(RegisterDevicesTest, WordsGoOutOnTheSpiBus) {
    const BoardRun run = board().traced().run({kDrivers, "spi"});
    EXPECT_EQ("words ok\n", run.out);
    EXPECT_THAT(run.trace, Contains(HasSubstr("fpga write 0x2404 32 0x00000033")));
    EXPECT_THAT(run.trace, Each(Not(HasSubstr("refused")))) << "the transmitter was ready for every word";
}

TEST(RegisterDevicesTest, APhyThatDoesNotAnswerReadsAsOnes) {
    const BoardRun run =
        board().option("--fault", "mdio:ethernet_mdio@1:no-answer").run({kDrivers, "88e1510"});
    EXPECT_THAT(run.out, HasSubstr("ffff ffff\n"));
    EXPECT_THAT(run.out, HasSubstr("speed 3 ok, is 0\n"));
}

TEST(RegisterDevicesTest, AMasterThatStaysBusyMakesThePhyFailAloud) {
    const BoardRun run = board().option("--fault", "mdio:ethernet_mdio:busy").run({kDrivers, "dp83867"});
    EXPECT_THAT(run.out, HasSubstr("ffffffff ffffffff\ninit failed\n"));
    EXPECT_THAT(run.log, Contains(HasSubstr("MDIO: timeout: 0xC00")));
}

TEST(RegisterDevicesTest, AMacWhoseResetHangsMakesTheUserPortFail) {
    const BoardRun run =
        board().option("--fault", "mac:subsys_hps_eth_mac:reset").run({kDrivers, "user-port"});
    EXPECT_EQ("user port failed\n", run.out);
}

}  // namespace
