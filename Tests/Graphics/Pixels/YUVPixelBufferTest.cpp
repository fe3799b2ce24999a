#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <climits>
#include <new>
#include <random>
#include <vector>

#include "Tests/Graphics/LibraryFaults.h"
#include "Tests/Graphics/PlainYuv.h"

using testing::Each;

namespace {

constexpr int kWidth = 37;
constexpr int kHeight = 11;
constexpr int kCount = kWidth * kHeight;
constexpr uint32_t kFlag = 0x80000000;
constexpr uint32_t kOpaqueWhite = 0x80ffffff;
constexpr uint32_t kWhiteFilled = 0x4eb20100;  // level 4, Y 940, Cb 256, Cr 256

/// A 37 × 11 buffer of fresh pixels.
class YUVPixelBufferTest : public testing::Test {
protected:
    YUVPixelBufferTest() { buffer.resize(kWidth, kHeight); }

    /// Makes every word anything.
    void randomise() {
        std::generate_n(buffer.pixels(), kCount, [this] { return any(); });
    }
    uint32_t any() { return static_cast<uint32_t>(random()); }
    int below(int limit) { return static_cast<int>(any() % static_cast<uint32_t>(limit)); }
    uint32_t word(int index) const { return buffer.pixels()[index]; }
    std::vector<uint32_t> words() const { return {buffer.pixels(), buffer.pixels() + buffer.count()}; }

    std::mt19937 random{13};
    YUVPixelBuffer buffer;
};

}  // namespace

TEST_F(YUVPixelBufferTest, WhiteAtAnEvenIndexIsY940Cb256NoCrLevel4) {
    buffer.setPixel(2, kOpaqueWhite);
    EXPECT_EQ(4U << 28 | 940U << 18 | 256U << 9, word(2));
}

TEST_F(YUVPixelBufferTest, WhiteAtAnOddIndexIsY940NoCbCr256Level4) {
    buffer.setPixel(3, kOpaqueWhite);
    EXPECT_EQ(4U << 28 | 940U << 18 | 256U, word(3));
}

TEST_F(YUVPixelBufferTest, WhichSampleAPixelCarriesGoesByTheIndexAndNotByTheColumn) {
    buffer.setPixel(kWidth, kOpaqueWhite);  // column 0 of row 1 of an odd width
    EXPECT_EQ(4U << 28 | 940U << 18 | 256U, word(kWidth));
}

TEST_F(YUVPixelBufferTest, AlphaBelow16NeverChangesAPixel) {
    randomise();
    const auto before = words();
    for (uint32_t alpha = 0; alpha < 16; ++alpha) {
        for (int i = 0; i < kCount; ++i) {
            buffer.setPixel(i, alpha << 24 | (any() & 0xffffff));
        }
    }
    EXPECT_EQ(before, words());
}

TEST_F(YUVPixelBufferTest, AFreshPixelTakesASemiTransparentColourWhole) {
    buffer.setPixel(0, 0x10ffffff);
    EXPECT_EQ(1U << 28 | 940U << 18 | 256U << 9, word(0));
}

TEST_F(YUVPixelBufferTest, ATransparentPixelsOldFieldsDoNotShineThrough) {
    buffer.fillRect(0, 0, kWidth, kHeight, 0x000000ff);
    buffer.setPixel(0, 0x20ffffff);
    EXPECT_EQ(1U << 28 | 940U << 18 | 256U << 9, word(0));
}

TEST_F(YUVPixelBufferTest, AnOpaqueColourReplacesAnyPixelButItsFlag) {
    randomise();
    const auto before = words();
    for (int i = 0; i < kCount; ++i) {
        buffer.setPixel(i, kOpaqueWhite);
        const uint32_t flag = before[static_cast<size_t>(i)] & kFlag;
        EXPECT_EQ(flag | 4U << 28 | 940U << 18 | (i % 2 == 0 ? 256U << 9 : 256U), word(i));
    }
}

TEST_F(YUVPixelBufferTest, HalfAlphaOverAFilledPixelHalvesTheSampleThatIsNotItsOwn) {
    buffer.fillRect(0, 0, kWidth, kHeight, 0x80000000);
    buffer.setPixel(0, 0x40ffffff);
    EXPECT_EQ(4U << 28 | 502U << 18 | 256U << 9 | 128U, word(0));
    buffer.setPixel(1, 0x40ffffff);
    EXPECT_EQ(4U << 28 | 502U << 18 | 128U << 9 | 256U, word(1));
}

TEST_F(YUVPixelBufferTest, SettingPixelsMatchesThePlainLoopForAllAlphasAndWords) {
    randomise();
    auto expected = words();
    for (int i = 0; i < 50000; ++i) {
        const int index = below(kCount);
        const uint32_t colour = any();
        buffer.setPixel(index, colour);
        uint32_t& word = expected[static_cast<size_t>(index)];
        word = PlainYuv::set(word, index, colour);
    }
    EXPECT_EQ(expected, words());
}

TEST_F(YUVPixelBufferTest, EveryColourIsSetAsTheFormulasSayAtEvenAndOddIndices) {
    buffer.resize(256, 2);
    for (uint32_t blue = 0; blue < 256; ++blue) {
        for (uint32_t green = 0; green < 256; ++green) {
            const PlainYuv::Reds reds(green, blue);
            int index = 0;
            for (const uint32_t colour : reds.colours) {
                buffer.setPixel(index++, colour);
                buffer.setPixel(index++, colour);
            }
            bool same = true;
            for (size_t red = 0; red < 256; ++red) {
                same = same && buffer.pixels()[2 * red] == reds.even[red] &&
                       buffer.pixels()[2 * red + 1] == reds.odd[red];
            }
            ASSERT_TRUE(same) << "green " << green << " blue " << blue;
        }
    }
}

TEST_F(YUVPixelBufferTest, EveryColourIsFilledAsTheFormulasSay) {
    buffer.resize(256, 1);
    for (uint32_t blue = 0; blue < 256; ++blue) {
        for (uint32_t green = 0; green < 256; ++green) {
            const PlainYuv::Reds reds(green, blue);
            for (int red = 0; red < 256; ++red) {
                buffer.fillRect(red, 0, 1, 1, reds.colours[static_cast<size_t>(red)]);
            }
            ASSERT_TRUE(std::equal(reds.filled.begin(), reds.filled.end(), buffer.pixels()))
                << "green " << green << " blue " << blue;
        }
    }
}

TEST_F(YUVPixelBufferTest, AFillStoresBothSamplesInEveryPixelOnPurpose) {
    buffer.fillRect(0, 0, kWidth, kHeight, kOpaqueWhite);
    EXPECT_THAT(words(), Each(4U << 28 | 940U << 18 | 256U << 9 | 256U));
    EXPECT_THAT(words(), Each(kWhiteFilled));
}

TEST_F(YUVPixelBufferTest, AFillWithAlphaBelow16StillOverwrites) {
    buffer.fillRect(0, 0, kWidth, kHeight, kOpaqueWhite);
    buffer.fillRect(0, kWidth - 2, 2, 2, 0x0fffffff);
    EXPECT_EQ(kWhiteFilled & 0x0fffffff, word(0));
    EXPECT_EQ(kWhiteFilled & 0x0fffffff, word(kWidth + 1));
    EXPECT_EQ(kWhiteFilled, word(2));
}

TEST_F(YUVPixelBufferTest, AFillDoesNotBlend) {
    buffer.fillRect(0, 0, kWidth, kHeight, kOpaqueWhite);
    buffer.fillRect(0, 0, kWidth, kHeight, 0x40000000);
    EXPECT_THAT(words(), Each(2U << 28 | 64U << 18 | 256U << 9 | 256U));
}

TEST_F(YUVPixelBufferTest, FillingRectanglesMatchesThePlainLoopAndTouchesNothingElse) {
    randomise();
    auto expected = words();
    for (int i = 0; i < 3000; ++i) {
        const int left = below(kWidth);
        const int top = below(kHeight);
        const int w = 1 + below(kWidth - left);
        const int h = 1 + below(kHeight - top);
        const uint32_t colour = any();
        buffer.fillRect(top * kWidth + left, kWidth - w, w, h, colour);
        for (int row = top; row < top + h; ++row) {
            for (int column = left; column < left + w; ++column) {
                uint32_t& word = expected[static_cast<size_t>(row * kWidth + column)];
                word = PlainYuv::filled(word, colour);
            }
        }
    }
    EXPECT_EQ(expected, words());
}

TEST_F(YUVPixelBufferTest, FillWritesNothingWhenWidthOrHeightIsZeroOrNegative) {
    for (const int none : {0, -1, INT_MIN}) {
        buffer.fillRect(0, kWidth - 3, 3, none, kOpaqueWhite);
        buffer.fillRect(0, kWidth, none, 3, kOpaqueWhite);
    }
    EXPECT_THAT(words(), Each(0U));
}

TEST_F(YUVPixelBufferTest, FillStaysInsideWhateverItIsAsked) {
    const int odd[] = {INT_MIN, -kWidth - 5, -kWidth, -1, 0, 1, 5, kWidth, kCount - 1, kCount, INT_MAX};
    // Rows are drawn as long as they begin inside, and end where the buffer does.
    const auto expectedOf = [](int start, int gap, int w, int h) {
        std::vector<uint32_t> expected(kCount);
        const int64_t step = int64_t{w} + gap;
        int64_t row = start;
        for (int i = 0; w > 0 && i < h && row >= 0 && row < kCount; ++i) {
            const auto end = expected.begin() + std::min<int64_t>(row + w, kCount);
            std::fill(expected.begin() + row, end, kWhiteFilled);
            row = step != 0 ? row + step : kCount;
        }
        return expected;
    };
    int drawn = 0;
    for (const int start : odd) {
        for (const int gap : odd) {
            for (const int w : odd) {
                for (const int h : odd) {
                    std::fill_n(buffer.pixels(), kCount, 0U);
                    buffer.fillRect(start, gap, w, h, kOpaqueWhite);
                    const auto expected = expectedOf(start, gap, w, h);
                    ASSERT_TRUE(std::equal(expected.begin(), expected.end(), buffer.pixels()))
                        << "start " << start << " gap " << gap << ' ' << w << " x " << h;
                    drawn += std::count(expected.begin(), expected.end(), 0U) < kCount ? 1 : 0;
                }
            }
        }
    }
    EXPECT_GT(drawn, 1000);
}

TEST_F(YUVPixelBufferTest, PixelsOutsideAreIgnoredAndReadAsZero) {
    buffer.fillRect(0, 0, kWidth, kHeight, 0x80123456);
    const auto before = words();
    for (const int outside : {-1, kCount, INT_MIN, INT_MAX}) {
        buffer.setPixel(outside, kOpaqueWhite);
        EXPECT_EQ(rgba(0), buffer.getPixel(outside));
    }
    EXPECT_EQ(before, words());
}

TEST_F(YUVPixelBufferTest, RowsOfColoursAreSetAsOneByOneAndCutAtBothEnds) {
    for (const int start : {-1000, -41, -40, -39, -8, -1, 0, 1, 2, 7, kCount - 41, kCount - 40, kCount - 39,
                            kCount - 9, kCount - 8, kCount - 1, kCount, INT_MIN, INT_MAX}) {
        for (const size_t length : {size_t{0}, size_t{1}, size_t{8}, size_t{40}, size_t{kCount + 2}}) {
            randomise();
            auto expected = words();
            std::vector<rgba> colours(length);
            std::generate(colours.begin(), colours.end(),
                          [this] { return rgba(below(2) == 0 ? any() : any() % 0x1000000 + 0x80000000); });
            for (size_t i = 0; i < length; ++i) {
                const int64_t index = start + static_cast<int64_t>(i);
                if (index >= 0 && index < kCount) {
                    uint32_t& word = expected[static_cast<size_t>(index)];
                    word = PlainYuv::set(word, index, colours[i].value);
                }
            }
            buffer.setPixels(start, colours);
            ASSERT_EQ(expected, words()) << length << " from " << start;
        }
    }
}

TEST_F(YUVPixelBufferTest, BlendingMasksIsSettingEveryPixelWithItsShareOfTheCoverage) {
    std::vector<uint8_t> levels(size_t{64} * 16);
    for (uint32_t alpha = 0; alpha <= 255; ++alpha) {
        randomise();
        auto expected = words();
        std::generate(levels.begin(), levels.end(),
                      [this] { return static_cast<uint8_t>(below(4) == 0 ? 0 : any()); });
        const int left = below(kWidth);
        const int top = below(kHeight);
        const int w = 1 + below(kWidth - left);
        const int h = 1 + below(kHeight - top);
        const uint32_t colour = any() & 0xffffff;
        buffer.blendMask(top * kWidth + left, kWidth - w,
                         {.data = levels.data(), .pitch = 64, .readable = 64, .width = w, .height = h},
                         colour | alpha << 24);
        for (int row = 0; row < h; ++row) {
            for (int column = 0; column < w; ++column) {
                const uint32_t level = levels[static_cast<size_t>(row * 64 + column)];
                const int index = (top + row) * kWidth + left + column;
                uint32_t& word = expected[static_cast<size_t>(index)];
                if (level != 0) {
                    word = PlainYuv::set(word, index, colour + alpha * (1 + level) / 256 * 0x1000000);
                }
            }
        }
        ASSERT_EQ(expected, words()) << alpha;
    }
}

TEST_F(YUVPixelBufferTest, MasksThatLeaveTheBufferAreCut) {
    const std::vector<uint8_t> levels(64, 255);
    const CoverageMask mask{.data = levels.data(), .pitch = 8, .readable = 8, .width = 8, .height = 8};
    for (const int start : {INT_MIN, -4, kCount - 4, INT_MAX}) {
        for (const int gap : {INT_MIN, -9, 0, kWidth - 8, INT_MAX}) {
            buffer.blendMask(start, gap, mask, kOpaqueWhite);
        }
    }
    EXPECT_EQ(940U, word(0) >> 18 & 0x3ff);
    EXPECT_EQ(940U, word(kCount - 1) >> 18 & 0x3ff);
}

TEST_F(YUVPixelBufferTest, DrawingNeverChangesBit31) {
    const std::vector<rgba> colours(kCount, rgba(kOpaqueWhite));
    const std::vector<rgba> half(kCount, rgba(0x40102030));
    const std::vector<uint8_t> levels(kCount, 200);
    const CoverageMask mask{
        .data = levels.data(), .pitch = kWidth, .readable = kWidth, .width = kWidth, .height = kHeight};
    for (const uint32_t flag : {0U, kFlag}) {
        std::fill_n(buffer.pixels(), kCount, flag);
        const auto expectKept = [&](const char* what) {
            for (const uint32_t word : words()) {
                ASSERT_EQ(flag, word & kFlag) << what;
                ASSERT_NE(0U, word & ~kFlag) << what;
            }
        };
        buffer.setPixels(0, half);
        expectKept("setPixels on fresh pixels");
        buffer.setPixels(0, half);
        expectKept("setPixels on drawn pixels");
        buffer.setPixels(0, colours);
        expectKept("setPixels of opaque colours");
        buffer.fillRect(0, 0, kWidth, kHeight, 0x00ffffff);
        expectKept("fillRect");
        for (const uint32_t colour : {0x40ffffffU, 0x30000000U, kOpaqueWhite, 0x00ffffffU}) {
            for (int i = 0; i < kCount; ++i) {
                buffer.setPixel(i, colour);
            }
            expectKept("setPixel");
        }
        buffer.blendMask(0, 0, mask, 0x80abcdef);
        expectKept("blendMask");
    }
}

TEST_F(YUVPixelBufferTest, AFilledPixelReadsBackInCoarseStepsWithOpaqueAs128) {
    buffer.fillRect(0, 0, kWidth, kHeight, kOpaqueWhite);
    EXPECT_EQ(rgba(0x80f2f2f2), buffer.getPixel(0));
    EXPECT_EQ(rgba(0x80f2f2f2), buffer.getPixel(kCount - 1));
}

TEST_F(YUVPixelBufferTest, ReadingAPixelDoesNotFetchThePartnersSample) {
    buffer.setPixel(0, kOpaqueWhite);
    buffer.setPixel(1, kOpaqueWhite);
    EXPECT_EQ(rgba(PlainYuv::read(4U << 28 | 940U << 18 | 256U << 9)), buffer.getPixel(0));
    EXPECT_EQ(rgba(PlainYuv::read(4U << 28 | 940U << 18 | 256U)), buffer.getPixel(1));
    EXPECT_NE(buffer.getPixel(0), buffer.getPixel(1));
}

TEST_F(YUVPixelBufferTest, AFreshPixelReadsAsItsZeroFieldsSay) {
    EXPECT_EQ(rgba(PlainYuv::read(0)), buffer.getPixel(0));
    EXPECT_EQ(0, buffer.getPixel(0).a());
}

TEST_F(YUVPixelBufferTest, ResizeThrowsTheContentsAwayFlagsToo) {
    std::fill_n(buffer.pixels(), kCount, ~0U);
    buffer.resize(20, 3);
    EXPECT_EQ(60, buffer.count());
    EXPECT_THAT(words(), Each(0U));
}

TEST(YUVPixelBufferSizeTest, IsEmptyUntilResized) {
    YUVPixelBuffer buffer;
    EXPECT_EQ(0, buffer.count());
    EXPECT_EQ(nullptr, buffer.pixels());
    const rgba colours[] = {kOpaqueWhite, kOpaqueWhite};
    buffer.setPixel(0, kOpaqueWhite);
    buffer.setPixels(-1, colours);
    buffer.fillRect(0, 0, 1, 1, kOpaqueWhite);
    EXPECT_EQ(rgba(0), buffer.getPixel(0));
}

TEST(YUVPixelBufferSizeTest, SizesThatMakeNoSenseLeaveItEmpty) {
    YUVPixelBuffer buffer;
    for (const auto& [width, height] :
         {std::pair{0, 5}, {5, 0}, {-1, 5}, {-3, -3}, {32768, 16384}, {65536, 65536}}) {
        buffer.resize(4, 4);
        buffer.resize(width, height);
        EXPECT_EQ(0, buffer.count());
        EXPECT_EQ(nullptr, buffer.pixels());
    }
}

TEST(YUVPixelBufferSizeTest, StaysAsItWasWhenMemoryIsShort) {
    YUVPixelBuffer buffer;
    buffer.resize(4, 4);
    buffer.setPixel(14, kOpaqueWhite);
    const uint32_t before = buffer.pixels()[14];
    FaultyLibraries faults;
    faults->arraysLeft = 0;
    EXPECT_THROW(buffer.resize(100, 100), std::bad_alloc);
    EXPECT_EQ(16, buffer.count());
    EXPECT_EQ(before, buffer.pixels()[14]);
}
