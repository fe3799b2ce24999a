#include "Tools/boardsim/Operator/KeyPlayer.h"

#include <gtest/gtest.h>

namespace {

using boardsim::KeyPlayer;
using boardsim::KeyStep;
using boardsim::parseKeyScript;
using std::chrono::milliseconds;

/// A player whose time stands still until it is moved.
class KeyPlayerTest : public testing::Test {
protected:
    void load(const char* script) { player = KeyPlayer(parseKeyScript(script)); }
    void pass(int ms) { now += milliseconds(ms); }
    void draw() {
        player.frameSeen(now);
        player.stateSeen(now);
    }
    /// The step taken now, "" when none.
    std::string play() {
        const KeyStep* step = player.play(now);
        return step == nullptr ? "" : step->text;
    }

    KeyPlayer::Clock::time_point now = KeyPlayer::Clock::time_point{} + std::chrono::hours(1);
    KeyPlayer player{{}};
};

TEST_F(KeyPlayerTest, BeginsAfterHalfASecondOnAScreenThatShowsNothing) {
    load("left");
    player.screenUseless(now);
    pass(499);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("left", play());
}

TEST_F(KeyPlayerTest, AScreenThatFailsLaterChangesNothing) {
    load("left right");
    draw();
    pass(20);
    EXPECT_EQ("left", play());
    pass(100);
    player.screenUseless(now);
    pass(399);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("right", play());
}

TEST_F(KeyPlayerTest, DoesNothingBeforeTheFirstPicture) {
    load("left");
    pass(10'000);
    EXPECT_FALSE(player.due());
    EXPECT_EQ("", play());
    player.stateSeen(now);
    pass(10'000);
    EXPECT_FALSE(player.due());
    EXPECT_EQ("", play());
}

TEST_F(KeyPlayerTest, BeginsHalfASecondAfterAPictureWithoutAState) {
    load("left");
    player.frameSeen(now);
    pass(499);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("left", play());
}

TEST_F(KeyPlayerTest, AStateAfterTheFirstPictureLetsTheOperatorBeginAtOnce) {
    load("left");
    player.frameSeen(now);
    pass(100);
    player.stateSeen(now);
    pass(19);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("left", play());
}

TEST_F(KeyPlayerTest, AStateBeforeTheFirstPictureDoesNotCount) {
    load("left");
    player.stateSeen(now);
    player.frameSeen(now);
    pass(499);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("left", play());
}

TEST_F(KeyPlayerTest, FurtherPicturesWithoutAStateDoNotPutOffTheBeginning) {
    load("left right");
    for (int i = 0; i < 10; ++i) {
        player.frameSeen(now);
        EXPECT_EQ("", play());
        pass(50);
    }
    EXPECT_EQ("left", play());
    player.frameSeen(now);
    pass(20);
    EXPECT_EQ("right", play());
}

TEST_F(KeyPlayerTest, WaitsUntilTheScreenHasBeenQuietForTwentyMilliseconds) {
    load("left");
    draw();
    pass(19);
    EXPECT_EQ("", play());
    draw();
    pass(19);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("left", play());
}

TEST_F(KeyPlayerTest, SaysWhenItWillBeDue) {
    load("left");
    draw();
    ASSERT_TRUE(player.due());
    EXPECT_EQ(now + milliseconds(20), *player.due());
}

TEST_F(KeyPlayerTest, TheNextStepWaitsForTheProgramsAnswer) {
    load("left right");
    draw();
    pass(20);
    EXPECT_EQ("left", play());
    pass(300);
    EXPECT_EQ("", play());
    draw();
    pass(19);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("right", play());
}

TEST_F(KeyPlayerTest, AStateAloneIsAnAnswer) {
    load("left right");
    draw();
    pass(20);
    EXPECT_EQ("left", play());
    player.stateSeen(now);
    pass(20);
    EXPECT_EQ("right", play());
}

TEST_F(KeyPlayerTest, APictureAloneIsAnAnswer) {
    load("left right");
    draw();
    pass(20);
    EXPECT_EQ("left", play());
    player.frameSeen(now);
    pass(19);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("right", play());
}

TEST_F(KeyPlayerTest, AStateSoonAfterAPictureKeepsTheOperatorWaiting) {
    load("left right");
    draw();
    pass(20);
    EXPECT_EQ("left", play());
    player.frameSeen(now);
    pass(19);
    player.stateSeen(now);
    pass(19);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("right", play());
}

TEST_F(KeyPlayerTest, WhatCameBeforeAStepDoesNotAnswerIt) {
    load("left right");
    draw();
    pass(20);
    EXPECT_EQ("left", play());
    pass(20);
    EXPECT_EQ("", play());
    EXPECT_EQ(now + milliseconds(480), *player.due());
}

TEST_F(KeyPlayerTest, AProgramThatDoesNotAnswerIsGivenHalfASecond) {
    load("left right");
    draw();
    pass(20);
    EXPECT_EQ("left", play());
    pass(499);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("right", play());
}

TEST_F(KeyPlayerTest, PausesCountFromTheStepBefore) {
    load("left wait:300 right");
    draw();
    pass(20);
    EXPECT_EQ("left", play());
    draw();
    pass(299);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("wait:300", play());
    EXPECT_EQ("right", play());
}

TEST_F(KeyPlayerTest, APauseAtTheStartCountsFromTheFirstPicture) {
    load("wait:100 left");
    pass(1000);
    EXPECT_FALSE(player.due());
    draw();
    pass(99);
    EXPECT_EQ("", play());
    pass(1);
    EXPECT_EQ("wait:100", play());
    EXPECT_EQ("left", play());
}

TEST_F(KeyPlayerTest, RestsWhenThereIsNothingLeft) {
    load("left");
    EXPECT_EQ(1U, player.remaining());
    draw();
    pass(20);
    play();
    EXPECT_EQ(0U, player.remaining());
    draw();
    pass(1000);
    EXPECT_FALSE(player.due());
    EXPECT_EQ("", play());
}

}  // namespace
