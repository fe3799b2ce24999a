#include "Tools/overlayview/Pattern.h"

#include <gtest/gtest.h>

#include "Tests/overlayview/OverlayBytes.h"
#include "Tools/overlayview/Colour.h"

namespace {

using overlays::bytes;
using overlays::File;
using overlayview::Pattern;
using overlayview::Picture;
using overlayview::RowOrder;
using overlayview::videoColour;

/// Two columns, three rows as they are stored.
const File kThreeRows = bytes({16, 128, 235, 128, 81, 90, 82, 240, 145, 54, 146, 34});

TEST(PatternTest, AWordIsYCbYCrForTwoPixels) {
    const Picture picture = Pattern(kThreeRows).picture({2, 3}, RowOrder::Progressive);
    ASSERT_EQ(6U, picture.pixels.size());
    EXPECT_EQ(videoColour(16, 128, 128), picture.pixels[0]);
    EXPECT_EQ(videoColour(235, 128, 128), picture.pixels[1]);
    EXPECT_EQ(videoColour(81, 90, 240), picture.pixels[2]);
    EXPECT_EQ(videoColour(82, 90, 240), picture.pixels[3]);
    EXPECT_EQ(videoColour(145, 54, 34), picture.pixels[4]);
}

TEST(PatternTest, InterlacedRowsArePutBackInPlace) {
    const Picture picture = Pattern(kThreeRows).picture({2, 3}, RowOrder::Interlaced);
    EXPECT_EQ(videoColour(16, 128, 128), picture.pixels[0]);
    EXPECT_EQ(videoColour(145, 54, 34), picture.pixels[2]) << "stored last, row 1";
    EXPECT_EQ(videoColour(81, 90, 240), picture.pixels[4]) << "stored second, row 2";
}

TEST(PatternTest, PixelsThatTheBodyDoesNotHaveAreTransparent) {
    File cut = kThreeRows;
    cut.pop_back();
    const Picture picture = Pattern(cut).picture({2, 3}, RowOrder::Progressive);
    EXPECT_EQ(255, picture.pixels[3].alpha);
    EXPECT_EQ(0, picture.pixels[4].alpha);
    EXPECT_EQ(0, picture.pixels[5].alpha);
}

TEST(PatternTest, ColoursAreCountedUpToThePadding) {
    File body = kThreeRows;
    EXPECT_EQ(6U, Pattern(body).colours(6));
    EXPECT_EQ(2U, Pattern(body).colours(2));
    body.resize(128);
    EXPECT_EQ(6U, Pattern(body).colours(6));
    EXPECT_EQ(7U, Pattern(body).colours(64));
    EXPECT_EQ(7U, Pattern(body).colours(UINT32_MAX));
    EXPECT_EQ(0U, Pattern({}).colours(5));
}

}  // namespace
