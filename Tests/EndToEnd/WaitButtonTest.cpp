#include <gtest/gtest.h>

#include "Tests/EndToEnd/Panelprobe.h"
#include "Tests/Support/PanelPicture.h"

namespace {

using e2e::onBoard;
using support::board;
using support::BoardRun;

struct Answer {
    const char* keys;
    const char* text;
};

class WaitButtonEndToEnd : public testing::TestWithParam<Answer> {};

TEST_P(WaitButtonEndToEnd, NamesTheKeyThatWasOperated) {
    const BoardRun run = onBoard({"--waitbutton"}, board().keys(GetParam().keys));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ(GetParam().text, run.out);
    support::expectLooksLike(e2e::golden("press-any-button"), support::asOperatorSees(run.frame));
}

INSTANTIATE_TEST_SUITE_P(Keys, WaitButtonEndToEnd,
                         testing::Values(Answer{"left", "OLED left button\n"},
                                         Answer{"right", "OLED right button\n"},
                                         Answer{"red", "Red push button\n"},
                                         Answer{"ccw", "Red button turned left (counterclockwise)\n"},
                                         Answer{"cw", "Red button turned right (clockwise)\n"},
                                         Answer{"3xccw", "Red button turned left (counterclockwise)\n"}));

TEST(WaitButtonTimeout, AKeyThatNeverComesEndsWithTheBoardsTimeout) {
    const BoardRun run = onBoard({"--waitbutton"}, board().timeout("0.5"));
    EXPECT_EQ(124, run.status);
    EXPECT_EQ("", run.out);
}

}  // namespace
