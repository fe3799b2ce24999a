#include "Tools/boardsim/Operator/KeyScript.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using boardsim::KeyStep;
using boardsim::PanelKey;
using boardsim::parseKeyScript;

TEST(KeyScriptTest, EachWordIsAStepInItsOrder) {
    const std::vector<KeyStep> steps = parseKeyScript("left 2xright red ccw 3xcw wait:500");
    ASSERT_EQ(6U, steps.size());
    EXPECT_EQ(PanelKey::Left, steps[0].strokes.at(0).key);
    EXPECT_EQ(1U, steps[0].strokes.at(0).times);
    EXPECT_EQ(PanelKey::Right, steps[1].strokes.at(0).key);
    EXPECT_EQ(2U, steps[1].strokes.at(0).times);
    EXPECT_EQ(PanelKey::Red, steps[2].strokes.at(0).key);
    EXPECT_EQ(PanelKey::CounterClockwise, steps[3].strokes.at(0).key);
    EXPECT_EQ(PanelKey::Clockwise, steps[4].strokes.at(0).key);
    EXPECT_EQ(3U, steps[4].strokes.at(0).times);
    EXPECT_TRUE(steps[5].strokes.empty());
    EXPECT_EQ(std::chrono::milliseconds(500), steps[5].pause);
    EXPECT_EQ("2xright", steps[1].text);
}

TEST(KeyScriptTest, PlusJoinsStrokesToOneMoment) {
    const std::vector<KeyStep> steps = parseKeyScript("left+2xccw+red");
    ASSERT_EQ(1U, steps.size());
    ASSERT_EQ(3U, steps[0].strokes.size());
    EXPECT_EQ(PanelKey::CounterClockwise, steps[0].strokes[1].key);
    EXPECT_EQ(2U, steps[0].strokes[1].times);
}

TEST(KeyScriptTest, AnEmptyScriptHasNoSteps) {
    EXPECT_TRUE(parseKeyScript("").empty());
    EXPECT_TRUE(parseKeyScript(" \t\n ,").empty());
}

TEST(KeyScriptTest, BlanksCommasAndLineEndsSeparate) {
    EXPECT_EQ(4U, parseKeyScript("  left,right\nred\tcw ").size());
}

TEST(KeyScriptTest, TheLargestNumbersAreTaken) {
    EXPECT_EQ(255U, parseKeyScript("255xleft")[0].strokes[0].times);
    EXPECT_EQ(std::chrono::hours(1), parseKeyScript("wait:3600000")[0].pause);
    EXPECT_EQ(std::chrono::milliseconds(0), parseKeyScript("wait:0")[0].pause);
}

class BadKeyScript : public testing::TestWithParam<const char*> {};

TEST_P(BadKeyScript, IsRefusedByNamingTheWord) {
    try {
        parseKeyScript(std::string("left ") + GetParam() + " right");
        FAIL() << GetParam() << " was accepted";
    } catch (const std::invalid_argument& error) {
        EXPECT_NE(std::string::npos, std::string(error.what()).find(std::string("'") + GetParam() + "'"))
            << error.what();
    }
}

INSTANTIATE_TEST_SUITE_P(Words, BadKeyScript,
                         testing::Values("up", "LEFT", "0xleft", "256xleft", "-1xleft", "xleft", "2x", "2xx",
                                         "x", "left+", "+left", "left++cw", "wait", "wait:", "wait:x",
                                         "wait:-1", "wait:1s", "wait:3600001", "2xwait:5", "left+wait:5",
                                         "99999999999xleft",
                                         "l\xC3\xA9"
                                         "ft",
                                         "2*left"));

}  // namespace
