#include <gtest/gtest.h>

#include "Tests/EndToEnd/Panelprobe.h"
#include "Tests/Support/PanelPicture.h"

namespace {

using e2e::onBoard;
using support::asOperatorSees;
using support::board;
using support::BoardRun;

TEST(CheckEndToEnd, EveryControlInItsTurnLeadsToSuccess) {
    const BoardRun run = onBoard({"--check"}, board().keys("left right red ccw cw"));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("", run.out);
    support::expectLooksLike(e2e::golden("result-success"), asOperatorSees(run.frame));
}

TEST(CheckEndToEnd, SeveralPressesAndStepsCountAsOperated) {
    const BoardRun run = onBoard({"--check"}, board().keys("2xleft 3xright 7xred 4xccw 15xcw"));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("", run.out);
}

TEST(CheckEndToEnd, AnotherControlIsAnsweredWithAReminderAndTheStepStaysOpen) {
    const BoardRun run = onBoard({"--check"}, board().keys("cw left right red ccw cw"));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("Waiting for:\n\t< Press \n\t< Button\n", run.out);
}

TEST(CheckEndToEnd, EachStepHasItsReminder) {
    const BoardRun run = onBoard({"--check"}, board().keys("red left red right left red cw ccw ccw cw"));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ(
        "Waiting for:\n\t< Press \n\t< Button\n"
        "Waiting for:\n\tPress >\n\tButton >\n"
        "Waiting for:\n\tPress red\n\tButton\n"
        "Waiting for:\n\t< Turn rotary\n\t< left (ccw)\n"
        "Waiting for:\n\tTurn rotary >\n\tright (cw) >\n",
        run.out);
}

struct Prompt {
    const char* keysBefore;
    const char* golden;
};

class CheckPrompt : public testing::TestWithParam<Prompt> {};

TEST_P(CheckPrompt, StandsOnThePanelUntilItsControlIsOperated) {
    const BoardRun run = onBoard({"--check"}, board().keys(GetParam().keysBefore).timeout("1"));
    EXPECT_EQ(124, run.status);
    support::expectLooksLike(e2e::golden(GetParam().golden), asOperatorSees(run.frame));
}

INSTANTIATE_TEST_SUITE_P(Steps, CheckPrompt,
                         testing::Values(Prompt{"", "check-1-left"}, Prompt{"left", "check-2-right"},
                                         Prompt{"left right", "check-3-red"},
                                         Prompt{"left right red", "check-4-ccw"},
                                         Prompt{"left right red ccw", "check-5-cw"}),
                         [](const auto& prompt) {
                             std::string name = prompt.param.golden;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

}  // namespace
