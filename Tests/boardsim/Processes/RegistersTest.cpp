// Programs that drive registers which act.
#include <gmock/gmock.h>

#include <algorithm>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const std::string kClient = REGISTER_CLIENT;

/// What the trace tells, without time stamps and without reads that only wait.
std::vector<std::string> events(const BoardRun& run) {
    std::vector<std::string> result;
    for (const std::string& line : run.trace) {
        const std::size_t start = line.find_first_not_of(' ');
        const std::string event = line.substr(line.find(' ', start) + 1);
        if (event.find("fpga read") == std::string::npos && event.find("repeated") == std::string::npos) {
            result.push_back(event);
        }
    }
    return result;
}

TEST(RegistersTest, BothPhysAnswerOnTheManagementBus) {
    const BoardRun run = board().run(
        {kClient, "read-phy:0.2", "read-phy:0.3", "read-phy:1.2", "read-phy:1.3", "read-phy:2.2"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_EQ("0x2000\n0xa231\n0x0141\n0x0dd1\n0xffff\n", run.out);
    EXPECT_THAT(run.err, Not(HasSubstr("nobody answers")));
}

TEST(RegistersTest, AResetBringsTheLinkDownAndUpAgain) {
    const BoardRun run = board().run({kClient, "link:1", "write-phy:1.9=0", "write-phy:1.0=0x9140",
                                      "read-phy:1.17", "link:1", "read-phy:1.17", "read-phy:1.0"});
    EXPECT_EQ("link\n0x0000\nlink\n0x7c00\n0x1140\n", run.out) << run.err;
}

TEST(RegistersTest, ExtendedRegistersKeepWhatIsWritten) {
    const BoardRun run =
        board().run({kClient, "write-phy:0.13=0x1f", "write-phy:0.14=0x16f", "write-phy:0.13=0x401f",
                     "read-phy:0.14", "write-phy:0.14=0x15", "read-phy:0.14"});
    EXPECT_EQ("0x0095\n0x0015\n", run.out) << run.err;
}

TEST(RegistersTest, TheMacEndsItsResetByItself) {
    const BoardRun run = board().run(
        {kClient, "poke:0x2014=1600", "reset-mac", "peek:0x2014", "poke:0x2008=0x93", "peek:0x2008"});
    EXPECT_EQ("reset\n0x00000640\n0x00000093\n", run.out) << run.err;
}

TEST(RegistersTest, TheSpiMasterSendsWordsToItsSlave) {
    const BoardRun run = board().run({kClient, "spi:0x11.0x22.0x33"});
    EXPECT_EQ("0x00000000\n0x00000011\n0x00000022\n", run.out) << run.err;
}

TEST(RegistersTest, OtherRegistersAreMemoryAsEver) {
    const BoardRun run = board().run({kClient, "poke:0x400=0x12345678", "peek:0x400", "poke:0x804=7",
                                      "peek:0x804", "poke:0x3000=8", "peek:0x3000"});
    EXPECT_EQ("0x12345678\n0x00000007\n0x00000008\n", run.out) << run.err;
}

TEST(RegistersTest, SeveralProcessesWithSeveralThreadsGetTheirAnswers) {
    const BoardRun run = board().run({kClient, "crowd:4"});
    EXPECT_EQ("0\n0\n0\n0\n", run.out) << run.err;
    EXPECT_THAT(run.err, Not(HasSubstr("nobody answers")));
}

TEST(RegistersTest, TheTraceTellsFramesAndAccessesInTheirOrder) {
    const BoardRun run =
        board().traced().run({kClient, "poke:0x3000=1", "read-phy:1.2", "write-phy:2.4=0x01e1"});
    EXPECT_THAT(events(run), ElementsAre("fpga write 0x3000 32 0x00000001", "fpga write 0x0800 32 0x60880000",
                                         "mdio read phy 1 reg 2 0x0141", "fpga write 0x0800 32 0x511201e1",
                                         "mdio write phy 2 reg 4 0x01e1, no answer"));
    EXPECT_THAT(run.trace, Contains(HasSubstr("fpga read 0x0800 32 0x00000141")));
}

TEST(RegistersTest, WrongUseIsRefusedAloud) {
    const BoardRun run =
        board().traced().run({kClient, "poke:0x800=0x12345678", "poke:0x2048=1", "peek:0x2410"});
    EXPECT_EQ("0x00000000\n", run.out);
    EXPECT_THAT(
        events(run),
        ElementsAre("fpga write 0x0800 32 0x12345678",
                    "ethernet_mdio refused fpga write 0x0800 32 0x12345678: no frame of clause 22",
                    "fpga write 0x2048 32 0x00000001",
                    "subsys_hps_eth_mac refused fpga write 0x2048 32 0x00000001: no register to write"));
    EXPECT_THAT(run.trace, Contains(HasSubstr("subsys_hps_ext_spi refused fpga read 0x2410 32 0x00000000: no "
                                              "register to read")));
}

struct FaultyBoard {
    const char* fault;
    std::vector<std::string> words;
    const char* seen;
    int status;
};
class RegisterFault : public testing::TestWithParam<FaultyBoard> {};

TEST_P(RegisterFault, ShowsWhereTheProgramLooks) {
    std::vector<std::string> command{kClient};
    command.insert(command.end(), GetParam().words.begin(), GetParam().words.end());
    const BoardRun run = board().option("--fault", GetParam().fault).run(command);
    EXPECT_EQ(GetParam().seen, run.out) << run.err;
    EXPECT_EQ(GetParam().status, run.status);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, RegisterFault,
    testing::Values(
        FaultyBoard{
            "mdio:ethernet_mdio@0:no-answer", {"read-phy:0.2", "read-phy:1.2"}, "0xffff\n0x0141\n", 0},
        FaultyBoard{"mdio:ethernet_mdio@1:no-answer:after=1:times=1",
                    {"read-phy:1.2", "read-phy:1.2", "read-phy:1.2"},
                    "0x0141\n0xffff\n0x0141\n",
                    0},
        FaultyBoard{"mdio:ethernet_mdio@0:link-down", {"link:1", "link:0"}, "link\nno link\n", 0},
        FaultyBoard{"mdio:ethernet_mdio:busy:after=1",
                    {"read-phy:0.2", "read-phy:0.3"},
                    "0x2000\n0x0800 stays 0xc000a231\n",
                    3},
        FaultyBoard{"mac:subsys_hps_eth_mac:reset", {"reset-mac"}, "0x2008 stays 0x00002000\n", 3}));

TEST(RegistersTest, AFaultThatNoDeviceHasIsWrongUsage) {
    const BoardRun run = board().option("--fault", "mac:other:reset").run({kClient});
    EXPECT_EQ(2, run.status);
    EXPECT_THAT(run.err, HasSubstr("there are mac:subsys_hps_eth_mac:reset"));
}

TEST(RegistersTest, WithoutTheDeviceNothingActs) {
    const BoardRun run =
        board().without("fpga").run({"/bin/sh", "-c", "echo $BOARDSIM_REGISTER_SOCKET.$LD_PRELOAD"});
    EXPECT_EQ(".\n", run.out);
}

}  // namespace
