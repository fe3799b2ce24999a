// The trace of a run, with the library that reports register accesses.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/Support/VirtualBoard.h"
#include "Tests/boardsim/Support/Process.h"

namespace {

using support::board;
using support::BoardRun;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

const std::string kClient = CLIENT;

/// The events without their time stamps.
std::vector<std::string> events(const BoardRun& run) {
    std::vector<std::string> result;
    for (const std::string& line : run.trace) {
        EXPECT_THAT(line, MatchesRegex(" *[0-9]+\\.[0-9][0-9][0-9] .*"));
        const std::size_t start = std::min(line.find_first_not_of(' '), line.size());
        result.push_back(line.substr(std::min(line.find(' ', start), line.size() - 1) + 1));
    }
    return result;
}

TEST(TraceTest, HoldsEverythingInTheOrderInWhichItHappened) {
    const BoardRun run =
        board().traced().run({kClient, "led:3", "draw:1", "state:1", "counters", "lit", "led:0"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_THAT(
        events(run),
        ElementsAre("fpga write 0x1000 32 0x00000003", "screen seek 0", "screen frame 15360 bytes at 0",
                    "screen seek 0", "screen state 0x31 0x0a at 0", "fpga read 0x1004 32 0x00000000",
                    "screen seek 0", "screen read 0x01 at 0", "fpga write 0x1000 32 0x00000000"));
}

TEST(TraceTest, EqualReadsInARowAreFolded) {
    const BoardRun run = board().traced().run({kClient, "spin:5001", "led:1"});
    EXPECT_THAT(events(run), ElementsAre("fpga read 0x1004 32 0x00000000", "… repeated 5000 times",
                                         "fpga write 0x1000 32 0x00000001"));
}

TEST(TraceTest, TimeStampsNeverGoBack) {
    const BoardRun run = board().traced().run({kClient, "led:1", "draw:1", "spin:100", "state:1"});
    double last = 0;
    for (const std::string& line : run.trace) {
        EXPECT_GE(std::stod(line), last) << line;
        last = std::stod(line);
    }
    EXPECT_GT(last, 0);
}

TEST(TraceTest, KeysAreTracedWhenTheyArePressed) {
    const BoardRun run = board().traced().keys("2xright").run({kClient, "await:1"});
    const std::vector<std::string> all = events(run);
    EXPECT_EQ("0x00000020\n", run.out);
    const auto pressed = std::find(all.begin(), all.end(), "operator 2xright");
    const auto seen = std::find(all.begin(), all.end(), "fpga read 0x1004 32 0x00000020");
    ASSERT_NE(all.end(), pressed);
    ASSERT_NE(all.end(), seen);
    EXPECT_LT(pressed, seen);
}

TEST(TraceTest, WrongUseIsRefusedAloud) {
    const BoardRun run = board().traced().run({kClient, "spoil:5", "led:4"});
    EXPECT_THAT(
        events(run),
        ElementsAre("fpga write 0x1004 32 0x00000005", "panel refused fpga write 0x1004 32 0x00000005",
                    "fpga write 0x1000 32 0x00000004", "panel refused fpga write 0x1000 32 0x00000004"));
}

TEST(TraceTest, AScreenThatTakesOneByteIsTracedPieceByPiece) {
    const BoardRun run = board().traced().screen("one-byte").run({kClient, "draw:1"});
    EXPECT_THAT(events(run), ElementsAre("screen seek 0", "screen piece 1 byte at 0"));
}

TEST(TraceTest, AStaticallyLinkedProgramIsRefusedAloud) {
    const BoardRun run = board().traced().run({STATIC_PROGRAM});
    EXPECT_EQ(126, run.status);
    EXPECT_THAT(run.err, HasSubstr("statically linked"));
    EXPECT_EQ(0, board().run({STATIC_PROGRAM}).status);
}

TEST(TraceTest, ARefusedProgramLeavesFilesAsTheyWere) {
    const support::TemporaryDirectory files;
    std::ofstream(files.file("before")) << "kept";
    std::string output;
    EXPECT_EQ(126, processes::runToEnd(
                       processes::onBoard({"--trace", files.file("trace"), "--log", files.file("before")},
                                          {STATIC_PROGRAM}),
                       output));
    EXPECT_FALSE(std::filesystem::exists(files.file("trace")));
    std::string kept;
    std::ifstream(files.file("before")) >> kept;
    EXPECT_EQ("kept", kept);
}

TEST(TraceTest, AMissingProgramIsJustMissing) {
    EXPECT_EQ(127, board().traced().run({"no-such-program"}).status);
}

}  // namespace
