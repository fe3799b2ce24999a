// An operator's keys as a program reads them from the panel's registers.
#include <gmock/gmock.h>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;

const std::string kClient = CLIENT;

TEST(KeysTest, EachStepChangesTheCountersOnce) {
    const BoardRun run = board().keys("left 2xright red 3xcw ccw").run({kClient, "await:5"});
    EXPECT_EQ("0x00000001\n0x00000021\n0x00000121\n0x00030121\n0x00020121\n", run.out);
    EXPECT_EQ("", run.err);
}

TEST(KeysTest, CountersWrapInTheirOwnBits) {
    const BoardRun run = board().keys("14xleft 3xleft 2xccw 3xcw").run({kClient, "await:4"});
    EXPECT_EQ("0x0000000e\n0x00000001\n0x00fe0001\n0x00010001\n", run.out);
}

TEST(KeysTest, StrokesOfOneMomentArriveTogether) {
    const BoardRun run = board().keys("left+2xccw+red").run({kClient, "await:1"});
    EXPECT_EQ("0x00fe0101\n", run.out);
}

TEST(KeysTest, NoKeyIsPressedBeforeTheProgramHasDrawn) {
    // Longer than an operator's half second of patience.
    const BoardRun run = board().keys("left").run(
        {kClient, "poll-ms:700", "counters", "state:1", "poll-ms:700", "counters", "await:1"});
    EXPECT_EQ("0x00000000\n0x00000000\n0x00000001\n", run.out);
}

TEST(KeysTest, AProgramThatDrawsButNeverSendsAStateGetsItsKeys) {
    const BoardRun run =
        board().keys("left right").run({kClient, "draw:1", "change", "draw:2", "change", "draw:3"});
    EXPECT_EQ("0x00000001\n0x00000011\n", run.out);
    EXPECT_EQ("", run.err);
}

TEST(KeysTest, AScreenThatIsMissingOrFailingIsNotWaitedFor) {
    const std::string untilPressed =
        "while [ $(" + kClient + " counters) = 0x00000000 ]; do :; done; " + kClient + " counters";
    EXPECT_EQ("0x00000001\n",
              board().keys("left").without("screen").run({"/bin/sh", "-c", untilPressed}).out);
    const std::string tryToDraw = kClient + " draw:1 >/dev/null; ";
    EXPECT_EQ("0x00000001\n",
              board().keys("left").screen("failing").run({"/bin/sh", "-c", tryToDraw + untilPressed}).out);
}

TEST(KeysTest, PausesArePassedOver) {
    const BoardRun run = board().keys("wait:30 left wait:30 right wait:1").run({kClient, "await:2"});
    EXPECT_EQ("0x00000001\n0x00000011\n", run.out);
}

TEST(KeysTest, StepsThatWereNotTakenAreReported) {
    const BoardRun run = board().keys("left wait:3600000 red").run({kClient, "await:1"});
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("0x00000001\n", run.out);
    EXPECT_EQ("boardsim: the program ended before 2 of 3 key steps\n", run.err);
}

TEST(KeysTest, AProgramThatTruncatesTheRegistersDoesNotBreakTheBoard) {
    const BoardRun run = board().keys("left").run(
        {"/bin/sh", "-c",
         ": > /dev/fpga; " + kClient + " draw:1 state:1; while [ ! -s /dev/fpga ]; do :; done; while [ $(" +
             kClient + " counters) = 0x00000000 ]; do :; done; " + kClient + " counters"});
    EXPECT_EQ("0x00000001\n", run.out);
    EXPECT_EQ(0, run.status);
}

TEST(KeysTest, WhatAProgramWritesOverTheCountersIsGoneWithTheNextKey) {
    const BoardRun run = board().keys("left").run({kClient, "spoil:0x7777", "await:1"});
    EXPECT_EQ("0x00000001\n", run.out);
}

}  // namespace
