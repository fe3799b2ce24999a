// The drivers of the network links and of the sync block, on the virtual board.
#include <gmock/gmock.h>

#include <cstdint>
#include <fstream>

#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

BoardRun drive(const std::vector<std::string>& words, const support::VirtualBoard& on = board()) {
    std::vector<std::string> command{NETWORK_DEVICES};
    command.insert(command.end(), words.begin(), words.end());
    return on.run(command);
}

support::VirtualBoard faulty(const std::string& fault) {
    return board().option("--fault", fault);
}

TEST(LinkEndToEnd, ThePortsHaveACarrierAndCarryTheInbandLink) {
    EXPECT_EQ("eth0 carrier yes state 1\neth1 carrier yes state 1\neth2 carrier no state 0\n",
              drive({"link:0", "link:1", "link:2"}).out);
}

TEST(LinkEndToEnd, WithoutAnInbandLinkThereIsACarrierOnly) {
    EXPECT_EQ("eth0 carrier yes state 2\n", drive({"link:0"}, board().without("inband")).out);
}

TEST(LinkEndToEnd, APortWithoutAWireHasNoCarrier) {
    EXPECT_EQ("eth0 carrier no state 0\neth1 carrier yes state 1\n",
              drive({"link:0", "link:1"}, faulty("net:eth0:carrier-down")).out);
    EXPECT_EQ("eth0 carrier no state 0\n", drive({"link:0"}, board().without("network")).out);
}

TEST(LinkEndToEnd, APulledWireIsSeenByWhoAsksAgain) {
    EXPECT_EQ("eth1 carrier yes state 1\neth1 carrier no state 0\n",
              drive({"link:1", "await-down:1"}, faulty("net:eth1:carrier-down=500").timeout("20")).out);
}

TEST(LinkEndToEnd, DriversAreAskedForWhatIsTheirs) {
    const BoardRun run =
        drive({"lane-on:3", "lane-off:3", "lane-on:8", "shutdown", "fibre:1", "fibre:7"}, board().traced());
    EXPECT_EQ("lane 3: yes\nlane 3: yes\nlane 8: no\nshutdown: 0\nfibre: 35\nfibre: -1\n", run.out);
    for (const char* line : {"pattern lane 3 on", "pattern lane 3 off", "pattern lane 8 on: Invalid argument",
                             "inbd emergency shutdown", "inbd fibre length of port 1: 35"}) {
        EXPECT_THAT(run.trace, Contains(HasSubstr(line)));
    }
    EXPECT_THAT(run.log, Contains(HasSubstr("Unable to do ioctl: Invalid argument")));
}

TEST(LinkEndToEnd, WithoutTheInterfacesTheirDriversDoNotAnswer) {
    EXPECT_EQ("lane 3: no\nshutdown: -1\nfibre: -1\n",
              drive({"lane-on:3", "shutdown", "fibre:0"}, board().without("inband").without("pattern")).out);
    EXPECT_EQ("lane 3: no\nlane 3: yes\n",
              drive({"lane-on:3", "lane-on:3"}, faulty("net:pattern:refuse:times=1")).out);
}

/// A pattern file: a header that tells so many words of payload, and the payload.
class PatternEndToEnd : public testing::Test {
protected:
    void write(std::uint32_t words, std::size_t payload) const {
        std::ofstream file(path, std::ios::binary);
        const std::uint32_t header[] = {0x11111111, 0x22222222, words};
        file.write(reinterpret_cast<const char*>(header), sizeof header);
        for (std::size_t i = 0; i < payload; ++i) {
            file.put(static_cast<char>(i * 7));
        }
    }

    const support::TemporaryDirectory directory;
    const std::string path = directory.file("pattern.bin");
};

TEST_F(PatternEndToEnd, AFileIsSentAndTheKernelCountsAllOfIt) {
    write(1000, 4000);
    const BoardRun run = drive({"send:" + path});
    EXPECT_THAT(run.out, StartsWith("sent: 1, 1003 words, checksum 0x"));
    EXPECT_THAT(run.log, Contains(HasSubstr("Total bytes sent: 4012")));
}

TEST_F(PatternEndToEnd, WithoutAWireAllBytesAreLost) {
    write(100, 400);
    const BoardRun run = drive({"send:" + path}, faulty("net:pattern:carrier-down"));
    EXPECT_THAT(run.out, StartsWith("sent: 0, "));
}

TEST_F(PatternEndToEnd, WithoutTheInterfaceThereIsNoSocket) {
    write(100, 400);
    EXPECT_THAT(drive({"send:" + path}, board().without("pattern")).out, StartsWith("sent: -7, "));
}

TEST(SyncEndToEnd, TheBlockTellsWhoItFollows) {
    EXPECT_EQ("id 001a2b3c00042a master 001a2b3c00042a is master yes sync word yes\n", drive({"sync"}).out);
    EXPECT_EQ("id 004d5e6f000017 master 001a2b3c00042a is master no sync word yes\n",
              drive({"sync"}, board().option("--board", "hd24")).out);
    EXPECT_EQ("id 00000000000000 master 00000000000000 is master no sync word no\n",
              drive({"sync"}, board().without("sync")).out);
}

TEST(SyncEndToEnd, TheNetworkConfigurationIsWritten) {
    const BoardRun run = drive({"config:17", "config:-1"}, board().traced());
    EXPECT_THAT(run.trace, Contains(HasSubstr("fpga write 0x0410 32 0x00000011")));
    EXPECT_THAT(run.trace, Contains(HasSubstr("fpga write 0x0410 32 0x00000000")));
}

TEST(SyncEndToEnd, TheTimeCodeIsReadAtBothRates) {
    EXPECT_THAT(drive({"vitc"}).out, testing::AllOf(StartsWith("3600"), EndsWith(" bits 12345678\n")));
    EXPECT_THAT(drive({"vitc"}, board().option("--board", "hd24")).out,
                testing::AllOf(StartsWith("7290"), EndsWith(" bits 00000000\n")));
}

TEST(SyncEndToEnd, AWrittenTimeCodeIsThereAndRunsOn) {
    // A frame, or a few on a busy machine, may have passed until it is read: enough are left of the second.
    EXPECT_THAT(drive({"set-vitc:4000,200"}).out,
                testing::MatchesRegex("set 1: 4000\\.[0-9]+ frame [0-9]+ bits 12345678\n"));
    EXPECT_THAT(drive({"set-vitc:4000,200"}, board().option("--board", "hd24")).out,
                testing::MatchesRegex("set 1: 4000\\.[0-9]+ frame [0-9]+ bits 12345678\n"));
}

TEST(SyncEndToEnd, NoTimeCodeIsTornWhileItRunsOverMidnight) {
    for (const char* name : {"orca", "hd24"}) {
        const BoardRun run =
            drive({"set-vitc:86399,600", "follow:30"}, board().option("--board", name).timeout("60"));
        EXPECT_THAT(run.out, EndsWith("steps below ten seconds: yes\n")) << name;
    }
}

TEST(SyncEndToEnd, ABlockThatTellsNonsenseDoesNotHangItsDriver) {
    const BoardRun run =
        drive({"sync", "vitc"}, faulty("sync:subsys_hps_central_sync:nonsense").timeout("60"));
    EXPECT_THAT(run.out, StartsWith("id ffffffffffffff master ffffffffffffff is master yes"));
    EXPECT_EQ(0, run.status);
}

}  // namespace
