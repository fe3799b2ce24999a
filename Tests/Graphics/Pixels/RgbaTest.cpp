#include "Vl/Graphics/Pixels/Rgba.h"

#include <gtest/gtest.h>

TEST(RgbaTest, RedIsInTheLowestByteAndCoverageInTheHighest) {
    constexpr rgba colour = 0x80332211;
    EXPECT_EQ(0x11, colour.r());
    EXPECT_EQ(0x22, colour.g());
    EXPECT_EQ(0x33, colour.b());
    EXPECT_EQ(0x80, colour.a());
}

TEST(RgbaTest, IsPutTogetherFromItsChannels) {
    EXPECT_EQ(rgba(0x40030201), rgba::of(1, 2, 3, 0x40));
}

TEST(RgbaTest, WithAlphaChangesOnlyTheCoverage) {
    EXPECT_EQ(rgba(0x05ffffff), rgba(0x80ffffff).withAlpha(5));
    EXPECT_EQ(rgba(0xff000000), rgba(0x00000000).withAlpha(255));
}

TEST(RgbaTest, IsTransparentBlackUnlessSaidOtherwise) {
    EXPECT_EQ(0U, rgba().value);
}

TEST(RgbaTest, DiffersWhenOnlyTheCoverageDiffers) {
    EXPECT_NE(rgba(0x80ffffff), rgba(0x7fffffff));
}
