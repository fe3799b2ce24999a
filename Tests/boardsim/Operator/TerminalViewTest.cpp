#include "Tools/boardsim/Operator/TerminalView.h"

#include <gtest/gtest.h>

namespace {

using boardsim::Picture;
using boardsim::plainBlocks;

/// '#' is white, '+' the brightest grey that still is dark, '.' black.
Picture drawn(const std::vector<std::string>& rows) {
    Picture picture{rows[0].size(), rows.size()};
    for (const std::string& row : rows) {
        for (const char c : row) {
            picture.rgb.insert(picture.rgb.end(), 3, c == '#' ? 255 : c == '+' ? 127 : 0);
        }
    }
    return picture;
}

TEST(TerminalViewTest, OneCharacterShowsTwoPixelsAboveEachOther) {
    EXPECT_EQ("█▀▄ \n ▄▀█\n", plainBlocks(drawn({"##..", "#.#.", "..##", ".#.#"})));
}

TEST(TerminalViewTest, AnOddLastRowHasDarknessBelow) {
    EXPECT_EQ("▀ \n", plainBlocks(drawn({"#."})));
}

TEST(TerminalViewTest, APixelIsSetWhenItIsBrighterThanHalf) {
    EXPECT_EQ(" \n", plainBlocks(drawn({"+", "+"})));
    EXPECT_EQ("▀\n", plainBlocks(Picture{1, 1, {128, 128, 128}}));
    EXPECT_EQ(" \n", plainBlocks(Picture{1, 1, {0, 150, 0}})) << "a green ground stays ground";
}

}  // namespace
