#include "Tools/boardsim/Operator/TerminalView.h"

#include <gtest/gtest.h>

#include <algorithm>

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

std::vector<std::uint8_t> white(std::size_t width, std::size_t height) {
    return std::vector<std::uint8_t>(3 * width * height, 255);
}

TEST(TerminalViewTest, OneCharacterShowsTwoPixelsAboveEachOther) {
    EXPECT_EQ("█▀▄ \n ▄▀█\n", plainBlocks(drawn({"##..", "#.#.", "..##", ".#.#"})));
}

TEST(TerminalViewTest, AnOddLastRowHasDarknessBelow) {
    EXPECT_EQ("▀ \n", plainBlocks(drawn({"#."})));
}

TEST(TerminalViewTest, APictureThatIsTooWideGetsTwoByTwoPixelsInACharacter) {
    EXPECT_EQ(
        " ▘▝▀▖▌▞▛▗▚▐▜▄▙▟█\n",
        plainBlocks(drawn({"..#..###..#..###..#..###..#..###", "........#.#.#.#..#.#.#.#########"}), 16));
}

TEST(TerminalViewTest, APictureIsOnlyMadeNarrowerWhenItMustBe) {
    const Picture picture = drawn({"#.#", "#.."});
    EXPECT_EQ("█ ▀\n", plainBlocks(picture, 3));
    EXPECT_EQ("▌▘\n", plainBlocks(picture, 2));
}

TEST(TerminalViewTest, APictureThatStillIsTooWideIsShrunk) {
    const Picture picture = drawn({"##....##", "##....##", "..##..##", "..##..##"});
    EXPECT_EQ("▚▐\n", plainBlocks(picture, 2));
    for (std::size_t columns = 1; columns <= 200; ++columns) {
        const std::string text = plainBlocks(Picture{160, 48, white(160, 48)}, columns);
        const std::size_t width = text.find('\n') / std::string("█").size();
        EXPECT_LE(width, columns);
        EXPECT_GT(2 * width + 2, std::min<std::size_t>(columns, 160)) << "uses the room there is";
    }
}

TEST(TerminalViewTest, APixelIsSetWhenItIsBrighterThanHalf) {
    EXPECT_EQ(" \n", plainBlocks(drawn({"+", "+"})));
    EXPECT_EQ("▀\n", plainBlocks(Picture{1, 1, {128, 128, 128}}));
    EXPECT_EQ(" \n", plainBlocks(Picture{1, 1, {0, 150, 0}})) << "a green ground stays ground";
}

}  // namespace
