#include "Vl/Graphics/Pixels/RGBPixelBuffer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>
#include <random>

#include "Tests/Graphics/ExpectSame.h"
#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainFrame.h"

using testing::Each;

namespace {

constexpr int kWidth = 37;
constexpr int kHeight = 11;

/// A 37 × 11 buffer of random colours whose coverages are at most `largestCoverage`.
class RGBPixelBufferTest : public testing::Test {
protected:
    RGBPixelBufferTest() { buffer.resize(kWidth, kHeight); }

    void randomise(unsigned largestCoverage) {
        for (int i = 0; i < buffer.count(); ++i) {
            buffer.pixels()[i] = static_cast<uint16_t>(random());
            buffer.alpha()[i] = static_cast<uint8_t>(random() % (largestCoverage + 1));
        }
    }
    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

    std::mt19937 random{7};
    RGBPixelBuffer buffer;
};

}  // namespace

TEST_F(RGBPixelBufferTest, AnUntouchedPixelTakesTheNewColourWholeWhateverItsAlpha) {
    for (const uint32_t alpha : {0U, 1U, 64U, 128U}) {
        buffer.resize(1, 1);
        buffer.setPixel(0, alpha << 24 | 0xffffff);
        EXPECT_EQ(0xffff, buffer.pixels()[0]) << alpha;
        EXPECT_EQ(alpha, buffer.alpha()[0]);
    }
}

TEST_F(RGBPixelBufferTest, AlphaZeroOnCoverageZeroWritesWhiteAndLeavesCoverageZero) {
    buffer.setPixel(3, 0x00ffffff);
    EXPECT_EQ(0xffff, buffer.pixels()[3]);
    EXPECT_EQ(0, buffer.alpha()[3]);
}

TEST_F(RGBPixelBufferTest, AlphaZeroOnAnOpaquePixelKeepsTheOldColour) {
    buffer.setPixel(3, 0x800000ff);
    buffer.setPixel(3, 0x0000ff00);
    EXPECT_EQ(rgba(0xff0000f8), buffer.getPixel(3));
    EXPECT_EQ(128, buffer.alpha()[3]);
}

TEST_F(RGBPixelBufferTest, HalfAlphaMixesHalfAndHalf) {
    buffer.setPixel(0, 0x80000000);
    buffer.setPixel(0, 0x40ffffff);
    EXPECT_EQ(rgba(0xff787c78), buffer.getPixel(0));  // 15 of 31, 31 of 63
}

TEST_F(RGBPixelBufferTest, AnOpaqueFillReadsBackAs255AndNotAs128OnPurpose) {
    buffer.fillRect(0, 0, kWidth, kHeight, 0x80ffffff);
    EXPECT_EQ(rgba(0xfff8fcf8), buffer.getPixel(0));
}

TEST_F(RGBPixelBufferTest, EveryColourIsSetFilledAndReadWithItsTopBits) {
    std::vector<rgba> colours(256);
    std::vector<uint8_t> stored(512);
    std::vector<rgba> read(256);
    for (uint32_t blue = 0; blue < 256; ++blue) {
        for (uint32_t green = 0; green < 256; ++green) {
            for (uint32_t red = 0; red < 256; ++red) {
                colours[red] = 0x80000000 + blue * 65536 + green * 256 + red;
                stored[2 * red] = static_cast<uint8_t>(red / 8 * 8 + green / 32);
                stored[2 * red + 1] = static_cast<uint8_t>(green / 4 % 8 * 32 + blue / 8);
                read[red] = 0xff000000 + blue / 8 * 8 * 65536 + green / 4 * 4 * 256 + red / 8 * 8;
            }
            buffer.resize(512, 1);
            buffer.setPixels(0, colours);
            for (int i = 0; i < 256; ++i) {
                buffer.fillRect(256 + i, 0, 1, 1, colours[static_cast<size_t>(i)]);
            }
            bool same = std::memcmp(stored.data(), buffer.pixels(), 512) == 0 &&
                        std::memcmp(stored.data(), buffer.pixels() + 256, 512) == 0;
            for (int i = 0; i < 256; ++i) {
                same = same && buffer.getPixel(i) == read[static_cast<size_t>(i)];
            }
            ASSERT_TRUE(same) << "green " << green << " blue " << blue;
        }
    }
}

TEST_F(RGBPixelBufferTest, CoverageBelowOpaqueReadsBackAsZero) {
    buffer.setPixel(0, 0x7fffffff);
    EXPECT_EQ(rgba(0x00f8fcf8), buffer.getPixel(0));
}

TEST_F(RGBPixelBufferTest, SettingPixelsMatchesThePlainLoopForAllAlphas) {
    randomise(255);
    PlainFrame expected(kWidth, kHeight, buffer);
    for (int i = 0; i < 50000; ++i) {
        const int index = below(kWidth * kHeight);
        const auto colour = static_cast<uint32_t>(random());
        buffer.setPixel(index, colour);
        expected.setPixel(index, colour);
    }
    expectSame(expected, buffer);
}

TEST_F(RGBPixelBufferTest, FillOverwritesCoverageWithASmallerOne) {
    buffer.fillRect(0, 0, kWidth, kHeight, 0x80ffffff);
    buffer.fillRect(0, kWidth - 2, 2, 2, 0x20000000);
    EXPECT_EQ(0x20, buffer.alpha()[0]);
    EXPECT_EQ(0x20, buffer.alpha()[kWidth + 1]);
    EXPECT_EQ(0x80, buffer.alpha()[2]);
}

TEST_F(RGBPixelBufferTest, FillingRectanglesMatchesThePlainLoopAndTouchesNothingElse) {
    randomise(128);
    PlainFrame expected(kWidth, kHeight, buffer);
    for (int i = 0; i < 3000; ++i) {
        const int left = below(kWidth);
        const int top = below(kHeight);
        const int w = 1 + below(kWidth - left);
        const int h = 1 + below(kHeight - top);
        const auto colour = static_cast<uint32_t>(random());
        buffer.fillRect(top * kWidth + left, kWidth - w, w, h, colour);
        expected.fill(left, top, w, h, colour);
    }
    expectSame(expected, buffer);
}

TEST_F(RGBPixelBufferTest, FillWritesNothingWhenWidthOrHeightIsZeroOrNegative) {
    const PlainFrame before(kWidth, kHeight, buffer);
    for (const int none : {0, -1, INT_MIN}) {
        buffer.fillRect(0, kWidth - 3, 3, none, 0x80ffffff);
        buffer.fillRect(0, kWidth, none, 3, 0x80ffffff);
    }
    expectSame(before, buffer);
}

TEST_F(RGBPixelBufferTest, FillStaysInsideWhateverItIsAsked) {
    const int odd[] = {INT_MIN, INT_MIN + 1, -kWidth - 5, -kWidth, -1, 0, 1, 5, kWidth, 300, 406, INT_MAX};
    static constexpr int64_t count = int64_t{kWidth} * kHeight;
    // Rows are drawn as long as they begin inside, and end where the buffer does.
    const auto expectedOf = [](int start, int gap, int w, int h) {
        PlainFrame frame(kWidth, kHeight);
        const int64_t step = int64_t{w} + gap;
        int64_t row = start;
        for (int i = 0; w > 0 && i < h && row >= 0 && row < count; ++i) {
            for (int64_t index = row; index < std::min(row + w, count); ++index) {
                frame.setPixel(static_cast<int>(index), 0x80ffffff);
            }
            row = step != 0 ? row + step : count;
        }
        return frame;
    };
    int drawn = 0;
    for (const int start : odd) {
        for (const int gap : odd) {
            for (const int w : odd) {
                for (const int h : odd) {
                    std::fill_n(buffer.pixels(), count, uint16_t{0});
                    std::fill_n(buffer.alpha(), count, uint8_t{0});
                    buffer.fillRect(start, gap, w, h, 0x80ffffff);
                    ASSERT_TRUE(expectedOf(start, gap, w, h) == buffer)
                        << "start " << start << " gap " << gap << ' ' << w << " x " << h << '\n'
                        << artOf(kWidth, kHeight, buffer);
                    drawn += PlainFrame(kWidth, kHeight) == buffer ? 0 : 1;
                }
            }
        }
    }
    EXPECT_GT(drawn, 1000);
}

TEST_F(RGBPixelBufferTest, FillCutsTheRowThatLeavesTheBuffer) {
    buffer.fillRect(kWidth * kHeight - 2, 0, 5, 1, 0x80ffffff);
    EXPECT_EQ(0, buffer.alpha()[kWidth * kHeight - 3]);
    EXPECT_EQ(128, buffer.alpha()[kWidth * kHeight - 1]);
}

TEST_F(RGBPixelBufferTest, PixelsOutsideAreIgnoredAndReadAsZero) {
    const PlainFrame before(kWidth, kHeight, buffer);
    for (const int outside : {-1, kWidth * kHeight, INT_MIN, INT_MAX}) {
        buffer.setPixel(outside, 0x80ffffff);
        EXPECT_EQ(rgba(0), buffer.getPixel(outside));
    }
    expectSame(before, buffer);
}

TEST_F(RGBPixelBufferTest, RowsOfColoursAreSetAsOneByOneAndCutAtBothEnds) {
    constexpr int count = kWidth * kHeight;
    for (const int start : {-1000, -41, -40, -39, -8, -1, 0, 1, 7, count - 41, count - 40, count - 39,
                            count - 9, count - 8, count - 1, count, INT_MIN, INT_MAX}) {
        for (const size_t length : {size_t{0}, size_t{1}, size_t{8}, size_t{40}, size_t{count + 2}}) {
            randomise(128);
            PlainFrame expected(kWidth, kHeight, buffer);
            std::vector<rgba> colours(length);
            for (auto& colour : colours) {
                const auto any = static_cast<uint32_t>(random());
                colour = (any & 0xffffff) | any % 129 << 24;
            }
            for (size_t i = 0; i < length; ++i) {
                const int64_t index = start + static_cast<int64_t>(i);
                if (index >= 0 && index < count) {
                    expected.setPixel(static_cast<int>(index), colours[i].value);
                }
            }
            buffer.setPixels(start, colours);
            expectSame(expected, buffer);
        }
    }
}

TEST_F(RGBPixelBufferTest, BlendingMasksMatchesThePlainLoopOverAllAlphas) {
    std::vector<uint8_t> levels(size_t{64} * 16);
    for (unsigned alpha = 0; alpha <= 255; ++alpha) {
        randomise(alpha % 2 == 0 ? 128 : 255);
        PlainFrame expected(kWidth, kHeight, buffer);
        for (int i = 0; i < 40; ++i) {
            for (auto& level : levels) {
                level = random() % 4 == 0 ? 0 : static_cast<uint8_t>(random());
            }
            const int left = below(kWidth);
            const int top = below(kHeight);
            const int w = 1 + below(kWidth - left);
            const int h = 1 + below(kHeight - top);
            const int pitch = w + below(20);
            const uint32_t colour = alpha << 24 | (random() & 0xffffff);
            buffer.blendMask(top * kWidth + left, kWidth - w,
                             {.data = levels.data(),
                              .pitch = pitch,
                              .readable = w + below(pitch - w + 1),
                              .width = w,
                              .height = h},
                             colour);
            expected.blend(left, top, levels.data(), pitch, w, h, colour);
        }
        expectSame(expected, buffer);
    }
}

TEST_F(RGBPixelBufferTest, BlendingReadsNoFurtherThanTheMaskAllows) {
    // The exact size, on the heap, so that a sanitizer sees any byte more.
    const std::vector<uint8_t> levels(size_t{9} * 3, 255);
    buffer.blendMask(0, kWidth - 9,
                     {.data = levels.data(), .pitch = 9, .readable = 9, .width = 9, .height = 3}, 0x80ffffff);
    EXPECT_EQ(128, buffer.alpha()[2 * kWidth + 8]);
    EXPECT_EQ(0, buffer.alpha()[2 * kWidth + 9]);
}

TEST_F(RGBPixelBufferTest, MasksThatLeaveTheBufferAreCut) {
    const std::vector<uint8_t> levels(64, 255);
    const CoverageMask mask{.data = levels.data(), .pitch = 8, .readable = 8, .width = 8, .height = 8};
    for (const int start : {INT_MIN, -4, kWidth * kHeight - 4, INT_MAX}) {
        for (const int gap : {INT_MIN, -9, 0, kWidth - 8, INT_MAX}) {
            buffer.blendMask(start, gap, mask, 0x80ffffff);
        }
    }
    EXPECT_EQ(128, buffer.alpha()[kWidth * kHeight - 1]);
    EXPECT_EQ(128, buffer.alpha()[0]);
}

TEST_F(RGBPixelBufferTest, ResizeThrowsTheContentsAway) {
    randomise(128);
    buffer.resize(20, 3);
    EXPECT_EQ(60, buffer.count());
    EXPECT_THAT(std::vector<uint16_t>(buffer.pixels(), buffer.pixels() + 60), Each(0));
    EXPECT_THAT(std::vector<uint8_t>(buffer.alpha(), buffer.alpha() + 60), Each(0));
}

TEST(RGBPixelBufferSizeTest, IsEmptyUntilResized) {
    RGBPixelBuffer buffer;
    EXPECT_EQ(0, buffer.count());
    EXPECT_EQ(nullptr, buffer.pixels());
    EXPECT_EQ(nullptr, buffer.alpha());
    const rgba colours[] = {0x80ffffff, 0x80ffffff};
    buffer.rotate();
    buffer.fillRect(0, 0, 1, 1, 0x80ffffff);
    buffer.setPixels(-1, colours);
    EXPECT_EQ(rgba(0), buffer.getPixel(0));
}

TEST(RGBPixelBufferSizeTest, SizesThatMakeNoSenseLeaveItEmpty) {
    RGBPixelBuffer buffer;
    for (const auto& [width, height] :
         {std::pair{0, 5}, {5, 0}, {-1, 5}, {-3, -3}, {32768, 32768}, {65536, 65536}}) {
        buffer.resize(4, 4);
        buffer.resize(width, height);
        EXPECT_EQ(0, buffer.count());
        EXPECT_EQ(nullptr, buffer.pixels());
    }
}

TEST(RGBPixelBufferSizeTest, StaysAsItWasWhenMemoryIsShort) {
    RGBPixelBuffer buffer;
    buffer.resize(4, 4);
    buffer.setPixel(15, 0x80ffffff);
    const PlainFrame before(4, 4, buffer);
    FaultyLibraries faults;
    for (const int arrays : {0, 1}) {  // none, or the colours but not the coverage
        faults->arraysLeft = arrays;
        EXPECT_THROW(buffer.resize(100, 100), std::bad_alloc);
        faults->arraysLeft = -1;
        expectSame(before, buffer);
    }
    buffer.resize(100, 100);
    EXPECT_EQ(10000, buffer.count());
}

TEST(RGBPixelBufferRotateTest, ReversesColoursAndCoverageForEverySize) {
    for (int count = 1; count <= 100; ++count) {
        RGBPixelBuffer buffer;
        buffer.resize(count, 1);
        for (int i = 0; i < count; ++i) {
            buffer.pixels()[i] = static_cast<uint16_t>(i * 257 + 1);
            buffer.alpha()[i] = static_cast<uint8_t>(i);
        }
        PlainFrame expected(count, 1, buffer);
        expected.reverse();
        buffer.rotate();
        expectSame(expected, buffer);
    }
}

TEST(RGBPixelBufferRotateTest, TheMiddleOfAnOddNumberOfPixelsStays) {
    RGBPixelBuffer buffer;
    buffer.resize(45, 3);
    buffer.setPixel(67, 0x80ffffff);
    buffer.rotate();
    EXPECT_EQ(rgba(0xfff8fcf8), buffer.getPixel(67));
}

TEST(RGBPixelBufferRotateTest, TwiceIsAsBefore) {
    RGBPixelBuffer buffer;
    buffer.resize(160, 48);
    buffer.fillRect(1000, 60, 100, 20, 0x80a0b0c0);
    const PlainFrame before(160, 48, buffer);
    buffer.rotate();
    buffer.rotate();
    expectSame(before, buffer);
}
