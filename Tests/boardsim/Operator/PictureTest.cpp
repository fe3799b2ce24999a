#include "Tools/boardsim/Operator/Picture.h"

#include <gtest/gtest.h>

namespace {

using boardsim::enlarge;
using boardsim::PanelGeometry;
using boardsim::Picture;
using boardsim::seenByOperator;

std::vector<std::byte> bytes(std::initializer_list<unsigned> values) {
    std::vector<std::byte> result;
    for (const unsigned value : values) {
        result.push_back(static_cast<std::byte>(value));
    }
    return result;
}

TEST(PictureTest, IsTurnedByHalfATurn) {
    // Red, green over blue, white: as written. The operator sees white, blue over green, red.
    const Picture picture =
        seenByOperator(bytes({0xF8, 0x00, 0x07, 0xE0, 0x00, 0x1F, 0xFF, 0xFF}), PanelGeometry{2, 2});
    const std::vector<std::uint8_t> expected{255, 255, 255, 0, 0, 255, 0, 255, 0, 255, 0, 0};
    EXPECT_EQ(2U, picture.width);
    EXPECT_EQ(2U, picture.height);
    EXPECT_EQ(expected, picture.rgb);
}

TEST(PictureTest, ColoursAreWidenedByRepeatingTheirUpperBits) {
    // 5 bits 10000, 6 bits 100000, 5 bits 00001.
    const Picture picture = seenByOperator(bytes({0x84, 0x01}), PanelGeometry{1, 1});
    EXPECT_EQ((std::vector<std::uint8_t>{0x84, 0x82, 0x08}), picture.rgb);
}

TEST(PictureTest, EnlargingRepeatsPixelsBothWays) {
    const Picture small{2, 1, {1, 2, 3, 4, 5, 6}};
    const Picture large = enlarge(small, 2);
    EXPECT_EQ(4U, large.width);
    EXPECT_EQ(2U, large.height);
    EXPECT_EQ(
        (std::vector<std::uint8_t>{1, 2, 3, 1, 2, 3, 4, 5, 6, 4, 5, 6, 1, 2, 3, 1, 2, 3, 4, 5, 6, 4, 5, 6}),
        large.rgb);
    EXPECT_EQ(small.rgb, enlarge(small, 1).rgb);
}

TEST(PictureTest, ShrunkEveryPixelIsTheAverageOfASquare) {
    const boardsim::Picture picture{3, 3, {10, 0, 0, 20, 0, 0, 7, 8, 9,  //
                                           30, 0, 4, 40, 0, 4, 9, 8, 7,  //
                                           1,  2, 3, 3,  4, 5, 6, 7, 255}};
    const boardsim::Picture small = boardsim::shrink(picture, 2);
    EXPECT_EQ(2U, small.width);
    EXPECT_EQ(2U, small.height);
    EXPECT_EQ((std::vector<std::uint8_t>{25, 0, 2, 8, 8, 8, 2, 3, 4, 6, 7, 255}), small.rgb);
    EXPECT_EQ(picture.rgb, boardsim::shrink(picture, 1).rgb);
    EXPECT_EQ(1U, boardsim::shrink(picture, 100).rgb.size() / 3);
}

}  // namespace
