// The board's network interfaces, as programs find them.
#include <gmock/gmock.h>
#include <unistd.h>

#include "Tests/Support/VirtualBoard.h"
#include "Tests/boardsim/Support/Process.h"

namespace {

using support::board;
using support::BoardRun;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

const std::string kClient = CLIENT;

BoardRun shell(const std::string& script, const support::VirtualBoard& on = board()) {
    return on.run({"/bin/sh", "-c", "PATH=$PATH:/sbin:/usr/sbin; cd /sys/class/net; " + script});
}

const std::string kCarriers = "for i in *; do echo $i $(cat $i/carrier); done";

TEST(NetworkTest, TheBoardHasItsOwnInterfacesOnly) {
    EXPECT_EQ("eth0 1\neth1 1\ninbd 1\nlo 1\npattern 1\n", shell(kCarriers).out);
}

TEST(NetworkTest, TheDirectoriesOfInterfacesAreReal) {
    const BoardRun run = shell("cat eth0/operstate; realpath pattern; ls /sys/devices/virtual/net");
    EXPECT_EQ("up\n/sys/devices/virtual/net/pattern\neth0\neth1\ninbd\nlo\npattern\n", run.out);
}

TEST(NetworkTest, ToolsSeeThem) {
    const BoardRun run = shell("ip -o link show up");
    EXPECT_THAT(run.out, HasSubstr(": eth0@"));
    EXPECT_THAT(run.out, HasSubstr(": inbd@"));
    EXPECT_THAT(run.out, HasSubstr(": lo: <LOOPBACK,UP"));
}

TEST(NetworkTest, AFrameCountsWithAllItsBytesAndNothingElseIsSent) {
    const std::string count = "cat pattern/statistics/tx_bytes; ";
    const BoardRun run = shell(count + kClient + " frame:pattern,1024 frame:pattern,1024; " + count +
                               "cat eth0/statistics/tx_bytes eth1/statistics/rx_bytes");
    EXPECT_EQ("0\n1024 sent\n1024 sent\n2048\n0\n0\n", run.out);
}

TEST(NetworkTest, InterfacesDoNotSpeakIpv6) {
    EXPECT_EQ("", shell("ip -6 addr show dev eth0").out);
}

TEST(NetworkTest, TheLoopbackWorks) {
    const BoardRun run = shell("ip -o addr show dev lo");
    EXPECT_THAT(run.out, HasSubstr("127.0.0.1/8"));
}

TEST(NetworkTest, ACarrierMayBeDownFromTheStart) {
    const BoardRun run = shell("cat eth0/carrier eth1/carrier eth1/operstate",
                               board().option("--fault", "net:eth1:carrier-down"));
    EXPECT_EQ("1\n0\ndown\n", run.out);
}

TEST(NetworkTest, ACarrierGoesDownAndComesBackWhileTheProgramRuns) {
    const std::string follow =
        "while [ $(cat eth0/carrier) = 1 ]; do :; done; echo down; "
        "while [ $(cat eth0/carrier) = 0 ]; do :; done; echo up";
    const BoardRun run = shell(follow, board()
                                           .option("--fault", "net:eth0:carrier-down=300")
                                           .option("--fault", "net:eth0:carrier-up=600")
                                           .timeout("20")
                                           .traced());
    EXPECT_EQ("down\nup\n", run.out);
    EXPECT_THAT(run.trace, Contains(HasSubstr("eth0 carrier down")));
    EXPECT_THAT(run.trace, Contains(HasSubstr("eth0 carrier up")));
}

TEST(NetworkTest, FramesWithoutACarrierDoNotCount) {
    const BoardRun run = shell(kClient + " frame:pattern,1024; cat pattern/statistics/tx_bytes",
                               board().option("--fault", "net:pattern:carrier-down"));
    EXPECT_THAT(run.out, testing::EndsWith("sent\n0\n"));
}

TEST(NetworkTest, AnInterfaceThatAProgramRemovedLosesNoCarrier) {
    const BoardRun run = shell("ip link del eth1; sleep 0.5; " + kCarriers,
                               board().option("--fault", "net:eth1:carrier-down=300").traced());
    EXPECT_EQ("eth0 1\ninbd 1\nlo 1\npattern 1\n", run.out);
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_THAT(run.trace, Contains(HasSubstr("cannot change the network interface eth1")));
}

TEST(NetworkTest, PartsOfTheNetworkMayBeMissing) {
    EXPECT_EQ("inbd\nlo\npattern\n", shell("ls", board().without("network")).out);
    EXPECT_EQ("eth0\neth1\nlo\npattern\n", shell("ls", board().without("inband")).out);
    EXPECT_EQ("eth0\neth1\ninbd\nlo\n", shell("ls", board().without("pattern")).out);
    const BoardRun none = shell("test -e /sys/class/net || echo none",
                                board().without("network").without("inband").without("pattern"));
    EXPECT_EQ("none\n", none.out);
}

TEST(NetworkTest, TheSlaveOfTheInbandLinkIsTold) {
    EXPECT_EQ("eth0\n", shell("cat /sys/kernel/inband/slave_if").out);
    EXPECT_EQ("eth1\n", shell("cat /sys/kernel/inband/slave_if", board().option("--board", "hd24")).out);
    EXPECT_THAT(shell("ls /sys/kernel", board().without("inband")).out, Not(HasSubstr("inband")));
}

TEST(NetworkTest, DriversAnswerTheirOwnRequestsAndNoOthers) {
    const BoardRun run = board().traced().run(
        {kClient, "mii:pattern,0x89F0,7", "mii:pattern,0x89F1,7", "mii:pattern,0x89F0,8", "mii:inbd,0x89F3",
         "mii:inbd,0x89F6,1", "mii:inbd,0x89F6,2", "mii:inbd,0x89F0,1", "mii:pattern,0x89F6,1",
         "mii:eth0,0x89F0,1", "mii:nothere,0x89F0,1"});
    EXPECT_EQ(
        "0, phy 7, 0x0000\n0, phy 7, 0x0000\n-1, 22\n0, phy 0, 0x0000\n35, phy 1, 0x0000\n-1, 22\n"
        "-1, 95\n-1, 95\n-1, 95\n-1, 19\n",
        run.out);
    EXPECT_THAT(run.trace, Contains(HasSubstr("pattern lane 7 on")));
    EXPECT_THAT(run.trace, Contains(HasSubstr("inbd emergency shutdown")));
    EXPECT_THAT(run.trace, Contains(HasSubstr("inbd fibre length of port 1: 35")));
}

TEST(NetworkTest, RequestsOfMissingInterfacesFindNoDevice) {
    const std::vector<std::string> ask{kClient, "mii:pattern,0x89F0,1", "mii:inbd,0x89F3", "mii:eth0,0x8947"};
    EXPECT_EQ("-1, 19\n-1, 19\n-1, 19\n",
              board().without("network").without("inband").without("pattern").run(ask).out);
}

TEST(NetworkTest, RequestsFailOnDemand) {
    const BoardRun run = board()
                             .option("--fault", "net:pattern:refuse=12:times=1")
                             .run({kClient, "mii:pattern,0x89F0,7", "mii:pattern,0x89F0,7"});
    EXPECT_EQ("-1, 12\n0, phy 7, 0x0000\n", run.out);
}

TEST(NetworkTest, AnOrdinaryUsersBoardHasTheSameNetwork) {
    std::vector<std::string> words = processes::onBoard(
        {"--without", "screen"}, {"/bin/sh", "-c",
                                  "cd /sys/class/net; cat */carrier; " + kClient +
                                      " frame:pattern,1024; cat pattern/statistics/tx_bytes"});
    if (geteuid() == 0) {
        const std::vector<std::string> become{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
        words.insert(words.begin(), become.begin(), become.end());
    }
    std::string output;
    EXPECT_EQ(0, processes::runToEnd(words, output)) << output;
    EXPECT_EQ("1\n1\n1\n1\n1\n1024 sent\n1024\n", output);
}

}  // namespace
