#include "Tools/overlayview/Colour.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using overlayview::colourOf;
using overlayview::Rgba;
using overlayview::RunCode;
using overlayview::videoColour;

TEST(ColourTest, ARunCodeIsTakenApart) {
    const RunCode code = RunCode::from(4U << 15 | 29U << 10 | 3U << 5 | 17U);
    EXPECT_EQ(4U, code.level);
    EXPECT_EQ(29U, code.luma);
    EXPECT_EQ(3U, code.cb);
    EXPECT_EQ(17U, code.cr);
}

TEST(ColourTest, BlackAndWhiteAreWhatTheySay) {
    EXPECT_EQ((Rgba{0, 0, 0, 255}), colourOf({2, 16, 16, 4}));
    EXPECT_EQ((Rgba{255, 255, 255, 255}), colourOf({29, 16, 16, 4}));
    EXPECT_EQ((Rgba{0, 0, 0, 255}), videoColour(16, 128, 128));
    EXPECT_EQ((Rgba{255, 255, 255, 255}), videoColour(235, 128, 128));
}

TEST(ColourTest, CoverageBecomesAlpha) {
    const int alphas[] = {0, 63, 127, 191, 255, 255, 255, 255};
    for (unsigned level = 0; level < 8; ++level) {
        EXPECT_EQ(alphas[level], colourOf({2, 16, 16, level}).alpha) << level;
    }
}

TEST(ColourTest, ChromaThatIsNotStoredIsNeutral) {
    EXPECT_EQ(colourOf({20, 16, 16, 4}), colourOf({20, 0, 0, 4}));
}

/// The studio colour bars of BT.601 at full saturation.
struct Bar {
    unsigned luma, cb, cr;
    Rgba colour;
};
constexpr Bar kBars[] = {
    {81, 90, 240, {255, 0, 0, 255}},    {145, 54, 34, {0, 255, 0, 255}},
    {41, 240, 110, {0, 0, 255, 255}},   {210, 16, 146, {255, 255, 0, 255}},
    {170, 166, 16, {0, 255, 255, 255}}, {106, 202, 222, {255, 0, 255, 255}},
};

bool isNear(const Rgba& a, const Rgba& b, int distance) {
    return std::abs(a.red - b.red) <= distance && std::abs(a.green - b.green) <= distance &&
           std::abs(a.blue - b.blue) <= distance && a.alpha == b.alpha;
}

TEST(ColourTest, ColourBarsComeOutAsColours) {
    for (const Bar& bar : kBars) {
        EXPECT_TRUE(isNear(bar.colour, videoColour(bar.luma, bar.cb, bar.cr), 2)) << bar.luma;
        // the same bars in steps of 8
        const Rgba coarse = colourOf({(bar.luma + 4) / 8, (bar.cb + 4) / 8, (bar.cr + 4) / 8, 4});
        EXPECT_TRUE(isNear(bar.colour, coarse, 16)) << bar.luma;
    }
}

TEST(ColourTest, WhatLiesOutsideIsCutOff) {
    EXPECT_TRUE(isNear({0, 135, 0, 255}, videoColour(0, 0, 0), 1));
    EXPECT_EQ(0, videoColour(0, 0, 0).red);
    EXPECT_EQ(255, videoColour(255, 255, 255).red);
    EXPECT_EQ(255, videoColour(255, 255, 255).blue);
}

}  // namespace
