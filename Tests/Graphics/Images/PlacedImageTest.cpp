#include "Vl/Graphics/Images/PlacedImage.h"

#include <gmock/gmock.h>

#include <climits>

#include "Tests/Graphics/PlainCanvas.h"

using testing::Each;
using testing::ElementsAre;

namespace {

void draw(Bitmap& bitmap, int width, int height, const std::vector<uint8_t>& samples, int channels) {
    PlacedImage placed(bitmap, width, height);
    for (int row = 0; row < height; ++row) {
        placed.drawRow(row, samples.data() + row * width * channels, channels);
    }
    placed.movePast();
}

/// A bitmap of 5 × 4 and an image of any size about any position, against two plain loops.
void expectAsPlainLoops(int width, int height, const Bitmap::Placement& placement) {
    constexpr int kColumns = 5;
    constexpr int kRows = 4;
    const int horizontal = static_cast<int>(placement.horizontal);
    const int vertical = static_cast<int>(placement.vertical);
    const int left = placement.x - (horizontal == 1 ? width / 2 : horizontal == 2 ? width : 0);
    const int top = placement.y - (vertical == 1 ? height / 2 : vertical == 2 ? height : 0);

    std::vector<uint8_t> samples;
    std::vector<rgba> expected(kColumns * kRows);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const auto grey = static_cast<uint8_t>(1 + row * width + column);
            samples.push_back(grey);
            const int x = left + column;
            const int y = top + row;
            if (x >= 0 && x < kColumns && y >= 0 && y < kRows) {
                expected[static_cast<size_t>(y * kColumns + x)] = 0x80000000U | grey * 0x010101U;
            }
        }
    }
    PlainCanvas canvas(kColumns, kRows);
    canvas.setPlacement(placement);
    draw(canvas, width, height, samples, 1);
    ASSERT_EQ(expected, canvas.getBuffer().pixels);
    ASSERT_EQ(left + (horizontal == 0 ? width : horizontal == 1 ? width / 2 : 0), canvas.getX());
    ASSERT_EQ(top + (vertical == 0 ? 0 : vertical == 1 ? height / 2 : height), canvas.getY());
}

void expectAsPlainLoopsEverywhere(int width, int height) {
    for (int x = -2 * width; x <= 5 + 2 * width; ++x) {
        for (int y = -2 * height; y <= 4 + 2 * height; ++y) {
            for (int alignments = 0; alignments < 9; ++alignments) {
                SCOPED_TRACE(testing::Message() << x << ", " << y << ", alignments " << alignments);
                expectAsPlainLoops(width, height,
                                   {x, y, static_cast<VerticalAlignment>(alignments / 3),
                                    static_cast<HorizontalAlignment>(alignments % 3)});
            }
        }
    }
}

}  // namespace

TEST(PlacedImageTest, ASmallImageIsDrawnAsByPlainLoopsAboutEveryPosition) {
    expectAsPlainLoopsEverywhere(3, 2);
}

TEST(PlacedImageTest, AnImageLargerThanTheBitmapIsCutOnEverySide) {
    expectAsPlainLoopsEverywhere(7, 6);
}

TEST(PlacedImageTest, ASinglePixelIsDrawnAsByPlainLoopsAboutEveryPosition) {
    expectAsPlainLoopsEverywhere(1, 1);
}

TEST(PlacedImageTest, ThePositionIsTheTopLeftPixelsWhileTheImageIsDrawn) {
    PlainCanvas canvas(5, 4);
    canvas.setPlacement({4, 3, VerticalAlignment::Bottom, HorizontalAlignment::Centred});
    const PlacedImage placed(canvas, 3, 2);
    EXPECT_EQ(3, canvas.getX());
    EXPECT_EQ(1, canvas.getY());
}

TEST(PlacedImageTest, FarAwayNothingIsDrawnAndThePositionStopsAtTheEnds) {
    for (const int far : {INT_MIN, INT_MAX}) {
        for (int alignment = 0; alignment < 3; ++alignment) {
            PlainCanvas canvas(5, 4);
            canvas.setPlacement({far, far, static_cast<VerticalAlignment>(alignment),
                                 static_cast<HorizontalAlignment>(alignment)});
            draw(canvas, 3, 2, std::vector<uint8_t>(6, 255), 1);
            EXPECT_THAT(canvas.getBuffer().pixels, Each(rgba(0)));
        }
    }
    PlainCanvas canvas(5, 4);
    canvas.setPosition(INT_MAX, 0);
    draw(canvas, 3, 2, std::vector<uint8_t>(6, 255), 1);
    EXPECT_EQ(INT_MAX, canvas.getX());
}

TEST(PlacedImageTest, AnEmptyBitmapTakesNothing) {
    PlainCanvas canvas;
    draw(canvas, 3, 2, std::vector<uint8_t>(6, 255), 1);
    EXPECT_EQ(3, canvas.getX());
}

TEST(PlacedImageTest, GreyIsOpaqueAndInAllThreeChannels) {
    PlainCanvas canvas(2, 1);
    draw(canvas, 2, 1, {0x12, 0xfe}, 1);
    EXPECT_THAT(canvas.getBuffer().pixels, ElementsAre(rgba(0x80121212), rgba(0x80fefefe)));
}

TEST(PlacedImageTest, GreyWithAlphaHasItsCoverage) {
    PlainCanvas canvas(2, 1);
    draw(canvas, 2, 1, {0x12, 0xff, 0xfe, 0x80}, 2);
    EXPECT_THAT(canvas.getBuffer().pixels, ElementsAre(rgba(0x80121212), rgba(0x40fefefe)));
}

TEST(PlacedImageTest, RgbIsOpaque) {
    PlainCanvas canvas(2, 1);
    draw(canvas, 2, 1, {1, 2, 3, 0xf4, 0xf5, 0xf6}, 3);
    EXPECT_THAT(canvas.getBuffer().pixels, ElementsAre(rgba(0x80030201), rgba(0x80f6f5f4)));
}

TEST(PlacedImageTest, EveryAlphaIsScaledToOneHundredTwentyEightAndRoundedDown) {
    std::vector<uint8_t> samples;
    for (int alpha = 0; alpha < 256; ++alpha) {
        samples.insert(samples.end(), {1, 2, 3, static_cast<uint8_t>(alpha)});
    }
    PlainCanvas canvas(256, 1);
    draw(canvas, 256, 1, samples, 4);
    for (uint32_t alpha = 0; alpha < 256; ++alpha) {
        EXPECT_EQ(rgba(alpha * 128 / 255 << 24 | 0x030201), canvas.getBuffer().pixels[alpha]);
    }
}
