// PHYs behind network interfaces, as programs reach them with MII requests.
#include <gmock/gmock.h>

#include <fstream>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

const std::string kClient = CLIENT;

BoardRun shell(const std::string& script, const support::VirtualBoard& on = board()) {
    return on.run({"/bin/sh", "-c", "PATH=$PATH:/sbin:/usr/sbin; " + script});
}

/// A line of what the kernel tells of this process.
std::string ownStatus(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name)) {
            return line + "\n";
        }
    }
    return {};
}

TEST(MiiTest, MiiToolReadsBothPhys) {
    const BoardRun run = shell(
        "sleep 0.05; mii-tool eth0 > /dev/null; mii-tool -v eth0; mii-tool eth1 > /dev/null; mii-tool -v "
        "eth1");
    EXPECT_THAT(run.out, HasSubstr("eth0: negotiated 1000baseT-FD"));
    EXPECT_THAT(run.out, HasSubstr("eth1: negotiated 1000baseT-FD"));
    EXPECT_THAT(run.out, HasSubstr("basic status: autonegotiation complete, link ok"));
    EXPECT_THAT(run.out, HasSubstr("model 29"));
    EXPECT_EQ(0, run.status) << run.err;
}

TEST(MiiTest, RegistersCanBeReadAndWritten) {
    // SIOCGMIIPHY, the identifier of the PHY at 0, a write of register 4 and what is there after it.
    const BoardRun run = board().run({kClient, "mii:eth0,0x8947,9,2", "mii:eth0,0x8948,0,2",
                                      "mii:eth0,0x8949,0,4,0x61", "mii:eth0,0x8948,0,4"});
    EXPECT_EQ("0, phy 0, 0x0141\n0, phy 0, 0x0141\n0, phy 0, 0x0000\n0, phy 0, 0x0061\n", run.out);
}

TEST(MiiTest, InterfacesThatTheBoardDoesNotHaveAreTheKernels) {
    const BoardRun run = board().run({kClient, "mii:nothere,0x8947,0,0", "mii:lo,0x8947,0,0"});
    EXPECT_EQ("-1, 19\n-1, 95\n", run.out);
}

TEST(MiiTest, WithoutThePartAllInterfacesAreTheKernels) {
    // The machine may have an eth0, but hardly one with this PHY.
    EXPECT_THAT(board().without("mii").run({kClient, "mii:eth0,0x8948,0,2"}).out,
                Not(HasSubstr("phy 0, 0x0141")));
    const auto silent = board().without("mii").without("inband").without("pattern");
    EXPECT_EQ(ownStatus("Seccomp:"), shell("grep Seccomp: /proc/self/status", silent).out);
}

TEST(MiiTest, ProgramsKeepTheirChanceToGainPrivileges) {
    EXPECT_EQ(ownStatus("NoNewPrivs:"), shell("grep NoNewPrivs /proc/self/status").out);
}

TEST(MiiTest, ManyProgramsMayAskAtOnce) {
    const std::string ask = kClient + " mii:eth0,0x8948,0,2";
    std::string words = "for i in 1 2 3 4; do (for j in 1 2 3 4 5; do " + ask + "; done) & done; wait";
    const BoardRun run = shell(words);
    std::string expected;
    for (int i = 0; i < 20; ++i) {
        expected += "0, phy 0, 0x0141\n";
    }
    EXPECT_EQ(expected, run.out);
}

TEST(MiiTest, FaultsShowInTheTool) {
    EXPECT_THAT(
        shell("sleep 0.05; mii-tool eth0; mii-tool eth0", board().option("--fault", "mii:eth0:link-down"))
            .out,
        HasSubstr("eth0: no link"));
    EXPECT_THAT(shell("mii-tool eth1", board().option("--fault", "mii:eth1:no-answer")).out,
                Not(HasSubstr("link ok")));
}

TEST(MiiTest, EveryAccessIsALineOfTheTrace) {
    const BoardRun run = board().traced().run({kClient, "mii:eth1,0x8948,1,2"});
    EXPECT_THAT(run.trace, Contains(HasSubstr("eth1 mdio read phy 1 reg 2 0x2000")));
}

}  // namespace
