#include "Vl/Graphics/Pixels/Bitmap.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <vector>

#include "Tests/Graphics/ExpectSame.h"
#include "Tests/Graphics/PlainFrame.h"
#include "Tests/Graphics/PngFiles.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Vl/Graphics/Images/Icon.h"
#include "Vl/Graphics/Pixels/RGB16Bitmap.h"

namespace {

constexpr rgba kWhite = 0x80ffffff;

class BitmapTest : public testing::Test {
protected:
    std::string art() const { return artOf(8, 4, bitmap.getBuffer()); }

    RGB16Bitmap bitmap{8, 4};
};

constexpr const char* kUntouched =
    "........\n"
    "........\n"
    "........\n"
    "........\n";

}  // namespace

TEST_F(BitmapTest, AlignmentsAreNumberedFromTheStartToTheEnd) {
    EXPECT_EQ(0, static_cast<int>(VerticalAlignment::Top));
    EXPECT_EQ(1, static_cast<int>(VerticalAlignment::Centred));
    EXPECT_EQ(2, static_cast<int>(VerticalAlignment::Bottom));
    EXPECT_EQ(0, static_cast<int>(HorizontalAlignment::Start));
    EXPECT_EQ(1, static_cast<int>(HorizontalAlignment::Centred));
    EXPECT_EQ(2, static_cast<int>(HorizontalAlignment::End));
}

TEST_F(BitmapTest, FillRectFillsFromTheDrawingPosition) {
    bitmap.setPosition(2, 1);
    bitmap.FillRect(3, 2, kWhite);
    EXPECT_EQ(art(),
              "........\n"
              "..###...\n"
              "..###...\n"
              "........\n");
    EXPECT_EQ(2, bitmap.getX());
    EXPECT_EQ(1, bitmap.getY());
}

TEST_F(BitmapTest, FillRectAtANegativePositionShrinksByTheOverhangAndStartsAtZero) {
    bitmap.setPosition(-2, -1);
    bitmap.FillRect(5, 3, kWhite);
    EXPECT_EQ(art(),
              "###.....\n"
              "###.....\n"
              "........\n"
              "........\n");
    EXPECT_EQ(-2, bitmap.getX());
    EXPECT_EQ(-1, bitmap.getY());
}

TEST_F(BitmapTest, FillRectIsCutAtTheFarEdges) {
    bitmap.setPosition(6, 3);
    bitmap.FillRect(9, 9, kWhite);
    EXPECT_EQ(art(),
              "........\n"
              "........\n"
              "........\n"
              "......##\n");
}

TEST_F(BitmapTest, FillRectOverTheWholeBitmapAndBeyondCoversIt) {
    bitmap.setPosition(-5, -5);
    bitmap.FillRect(100, 100, kWhite);
    EXPECT_EQ(art(),
              "########\n"
              "########\n"
              "########\n"
              "########\n");
}

TEST_F(BitmapTest, FillRectThatHangsOverOnBothSidesIsOneRowWide) {
    bitmap.setPosition(-5, 1);
    bitmap.FillRect(100, 1, kWhite);
    EXPECT_EQ(art(),
              "........\n"
              "########\n"
              "........\n"
              "........\n");
}

TEST_F(BitmapTest, FillRectJudgesTheFarEdgeFromTheUncutPositionOnPurpose) {
    bitmap.setPosition(-2, 0);
    bitmap.FillRect(11, 1, kWhite);  // nine columns are left of it, one more than a row has
    EXPECT_EQ(art(),
              "########\n"
              "#.......\n"
              "........\n"
              "........\n");
}

TEST_F(BitmapTest, FillRectOutsideOnAnySideWritesNothing) {
    const std::pair<int, int> outside[] = {{8, 0},
                                           {0, 4},
                                           {-3, 0},
                                           {0, -3},
                                           {INT_MAX, 0},
                                           {0, INT_MAX},
                                           {INT_MIN, 0},
                                           {0, INT_MIN},
                                           {INT_MIN, INT_MIN},
                                           {INT_MAX, INT_MAX}};
    for (const auto& [x, y] : outside) {
        bitmap.setPosition(x, y);
        bitmap.FillRect(3, 3, kWhite);
        EXPECT_EQ(art(), kUntouched) << x << ' ' << y;
    }
}

TEST_F(BitmapTest, FillRectWithNoWidthOrHeightWritesNothing) {
    for (const auto& [w, h] : {std::pair{0, 3}, {3, 0}, {-1, 3}, {3, -1}, {INT_MIN, INT_MIN}}) {
        bitmap.FillRect(w, h, kWhite);
        EXPECT_EQ(art(), kUntouched) << w << ' ' << h;
    }
}

TEST_F(BitmapTest, FillRectOfTheLargestSizeStaysInside) {
    for (const int x : {INT_MIN, -1, 0, 7, INT_MAX}) {
        for (const int y : {INT_MIN, -1, 0, 3, INT_MAX}) {
            bitmap.setPosition(x, y);
            bitmap.FillRect(INT_MAX, INT_MAX, kWhite);
        }
    }
    EXPECT_EQ(art(),
              "########\n"
              "########\n"
              "########\n"
              "########\n");
}

TEST_F(BitmapTest, FillRectOverwritesWithoutBlending) {
    bitmap.FillRect(8, 4, kWhite);
    bitmap.FillRect(1, 1, 0x00000000);
    EXPECT_EQ(0, bitmap.getBuffer().pixels()[0]);
    EXPECT_EQ(0, bitmap.getBuffer().alpha()[0]);
}

TEST_F(BitmapTest, AnEmptyBitmapTakesAnyDrawing) {
    RGB16Bitmap empty;
    const uint8_t level = 255;
    empty.FillRect(5, 5, kWhite);
    empty.BlendMask(0, 0, {.data = &level, .pitch = 1, .readable = 1, .width = 1, .height = 1}, kWhite);
    EXPECT_EQ(0, empty.getBuffer().count());
}

TEST_F(BitmapTest, BlendMaskIsCutAtEveryEdge) {
    std::mt19937 random(5);
    std::vector<uint8_t> levels(12 * 7);
    for (int left = -14; left <= 10; ++left) {
        for (int top = -8; top <= 5; ++top) {
            for (auto& level : levels) {
                level = static_cast<uint8_t>(random() % 2 == 0 ? 0 : random());
            }
            PlainFrame expected(8, 4, bitmap.getBuffer());
            bitmap.BlendMask(left, top,
                             {.data = levels.data(), .pitch = 12, .readable = 12, .width = 11, .height = 7},
                             0x80c08040);
            expected.blend(left, top, levels.data(), 12, 11, 7, 0x80c08040);
            expectSame(expected, bitmap.getBuffer());
        }
    }
}

TEST_F(BitmapTest, BlendMaskFarOutsideDrawsNothing) {
    const std::vector<uint8_t> levels(64, 255);
    const CoverageMask mask{.data = levels.data(), .pitch = 8, .readable = 8, .width = 8, .height = 8};
    for (const int left : {INT_MIN, INT_MAX, -8, 8}) {
        for (const int top : {INT_MIN, INT_MAX, 0}) {
            bitmap.BlendMask(left, top, mask, kWhite);
        }
    }
    EXPECT_EQ(art(), kUntouched);
}

TEST_F(BitmapTest, AnIconIsDrawnAtTheDrawingPositionAndMovesItPast) {
    const support::TemporaryDirectory directory;
    const std::string path = directory.file("icon.png");
    writePngFile(path, {.width = 3, .height = 2, .samples = std::vector<uint8_t>(18, 255)});
    Icon icon;
    icon.Load(path.c_str());
    bitmap.setPosition(2, 1);
    bitmap.render(icon);
    EXPECT_EQ(art(),
              "........\n"
              "..###...\n"
              "..###...\n"
              "........\n");
    EXPECT_EQ(5, bitmap.getX());
    EXPECT_EQ(1, bitmap.getY());
}

TEST_F(BitmapTest, AnIconIsNeverAReasonToResize) {
    const support::TemporaryDirectory directory;
    const std::string path = directory.file("icon.png");
    writePngFile(path, {.width = 20, .height = 20, .samples = std::vector<uint8_t>(1200, 255)});
    Icon icon;
    icon.Load(path.c_str());
    bitmap.render(icon);
    EXPECT_EQ(8, bitmap.getWidth());
    EXPECT_EQ(4, bitmap.getHeight());
}

TEST_F(BitmapTest, AnIconWithoutAFileDrawsNothing) {
    bitmap.setPosition(3, 2);
    bitmap.render(Icon());
    EXPECT_EQ(art(), kUntouched);
    EXPECT_EQ(3, bitmap.getX());
}
