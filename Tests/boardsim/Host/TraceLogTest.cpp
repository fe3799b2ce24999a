#include "Tools/boardsim/Host/TraceLog.h"

#include <gmock/gmock.h>

namespace {

using boardsim::TraceLog;
using std::chrono::microseconds;
using testing::ElementsAre;

class TraceLogTest : public testing::Test {
protected:
    TraceLog::Clock::time_point at(int us) const { return start + microseconds(us); }

    std::vector<std::string> lines;
    TraceLog::Clock::time_point start{};
    TraceLog trace{[this](std::string_view line) { lines.emplace_back(line); }, start};
};

TEST_F(TraceLogTest, LinesCarryMillisecondsSinceTheStart) {
    trace.add(at(12345), "screen seek 0");
    trace.add(at(1'000'000), "screen seek 0");
    EXPECT_THAT(lines, ElementsAre("      12.345 screen seek 0\n", "    1000.000 screen seek 0\n"));
}

TEST_F(TraceLogTest, RepetitionsBecomeOneLine) {
    for (int i = 0; i < 1001; ++i) {
        trace.addRepeatable(at(i), "read");
    }
    trace.add(at(5000), "other");
    EXPECT_THAT(lines, ElementsAre("       0.000 read\n", "       1.000 … repeated 1000 times\n",
                                   "       5.000 other\n"));
}

TEST_F(TraceLogTest, OneRepetitionIsOneTime) {
    trace.addRepeatable(at(0), "read");
    trace.addRepeatable(at(0), "read");
    trace.finish();
    EXPECT_THAT(lines, ElementsAre("       0.000 read\n", "       0.000 … repeated 1 time\n"));
}

TEST_F(TraceLogTest, WhatDiffersIsNotFolded) {
    trace.addRepeatable(at(0), "read 1");
    trace.addRepeatable(at(0), "read 2");
    trace.addRepeatable(at(0), "read 1");
    EXPECT_EQ(3U, lines.size());
}

TEST_F(TraceLogTest, AnEventBetweenEqualReadsSeparatesThem) {
    trace.addRepeatable(at(0), "read");
    trace.add(at(0), "write");
    trace.addRepeatable(at(0), "read");
    trace.finish();
    EXPECT_THAT(lines, ElementsAre("       0.000 read\n", "       0.000 write\n", "       0.000 read\n"));
}

TEST_F(TraceLogTest, EventsThatAreNotRepeatableAreAllWritten) {
    trace.add(at(0), "screen seek 0");
    trace.add(at(0), "screen seek 0");
    trace.addRepeatable(at(0), "screen seek 0");
    EXPECT_EQ(3U, lines.size());
}

TEST_F(TraceLogTest, FinishingTwiceWritesOnce) {
    trace.addRepeatable(at(0), "read");
    trace.addRepeatable(at(0), "read");
    trace.finish();
    trace.finish();
    EXPECT_EQ(2U, lines.size());
}

}  // namespace
