#include <gtest/gtest.h>

#include <random>

#include "Tests/Graphics/OverlayFile.h"
#include "Tests/Graphics/PlainOverlay.h"

namespace {

/// The first bytes of a pattern's body.
std::string body(const YUVBitmap& bitmap, bool interlaced, size_t bytes) {
    const OverlayFile file;
    EXPECT_EQ(0, bitmap.savePattern(file, 0, interlaced));
    return hexOf(file.bytes().substr(12, bytes));
}

}  // namespace

TEST(SavePatternTest, APairIsLumaAndCbThenLumaAndCr) {
    YUVBitmap bitmap(4, 1);
    paint(bitmap, {overlayWord(64, 256, 32, 4), overlayWord(940, 44, 480, 4),  //
                   overlayWord(4, 2, 511, 0) | 0x80000000, overlayWord(8, 511, 6, 7)});
    const OverlayFile file;
    EXPECT_EQ(0, bitmap.savePattern(file, 0xabcdef01, false));
    EXPECT_EQ(hexOf(file.bytes()),
              "ffffffff abcdef01 00000020 1080ebf0 01010203 00000000 00000000 00000000\n"
              "*\n"
              "00000000 00000000 00000000\n");
}

TEST(SavePatternTest, EveryValueIsRounded) {
    YUVBitmap bitmap(4, 1);
    paint(bitmap, {overlayWord(5, 2, 0, 0), overlayWord(6, 0, 2, 0),  //
                   overlayWord(1021, 3, 0, 0), overlayWord(1020, 0, 3, 0)});
    EXPECT_EQ("01010201 ff02ff02\n", body(bitmap, false, 8));
}

TEST(SavePatternTest, WhatIsRoundedUpTo256ComesOutAsZeroOnPurpose) {
    YUVBitmap bitmap(2, 1);
    paint(bitmap, {overlayWord(1022, 511, 0, 0), overlayWord(1023, 0, 511, 0)});
    EXPECT_EQ("00000000\n", body(bitmap, false, 4));
    paint(bitmap, {overlayWord(1021, 510, 0, 0), overlayWord(1021, 0, 510, 0)});
    EXPECT_EQ("ffffffff\n", body(bitmap, false, 4));
}

TEST(SavePatternTest, InterlacedRowsAreWrittenEvenOnesFirst) {
    YUVBitmap bitmap(2, 3);
    const uint32_t rows[] = {overlayWord(4, 0, 0, 0), overlayWord(8, 0, 0, 0), overlayWord(12, 0, 0, 0)};
    paint(bitmap, {rows[0], rows[0], rows[1], rows[1], rows[2], rows[2]});
    EXPECT_EQ("01000100 03000300 02000200\n", body(bitmap, true, 12));
    EXPECT_EQ("01000100 02000200 03000300\n", body(bitmap, false, 12));
}

TEST(SavePatternTest, AnOddWidthTakesTheNextPixelInMemoryAndAfterTheLastAnEmptyOne) {
    YUVBitmap bitmap(1, 3);
    paint(bitmap, {overlayWord(4, 2, 20, 4), overlayWord(8, 4, 40, 4), overlayWord(12, 6, 60, 4)});
    EXPECT_EQ("01010214 0202031e 03030000 00000000\n", body(bitmap, false, 16));
    EXPECT_EQ("01010214 03030000 0202031e 00000000\n", body(bitmap, true, 16));
}

TEST(SavePatternTest, ABodyOf128BytesIsNotPaddedAndHasNoEndWord) {
    YUVBitmap bitmap(64, 1);
    bitmap.FillRect(64, 1, 0x80ffffff);
    const OverlayFile file;
    EXPECT_EQ(0, bitmap.savePattern(file, 1, false));
    EXPECT_EQ(hexOf(file.bytes()),
              "ffffffff 00000001 00000020 eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80\n"
              "eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80\n"
              "eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80\n"
              "eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80 eb80eb80\n"
              "eb80eb80 eb80eb80 eb80eb80\n");
}

TEST(SavePatternTest, AnEmptyBitmapIsAHeaderAlone) {
    const OverlayFile file;
    EXPECT_EQ(0, YUVBitmap().savePattern(file, 9, true));
    EXPECT_EQ("ffffffff 00000009 00000000\n", hexOf(file.bytes()));
}

TEST(SavePatternTest, RandomPicturesAreWrittenAsPixelByPixel) {
    std::mt19937 random(25);
    for (const int width : {1, 2, 3, 7, 64, 65, 2047, 2048, 2049, 2050, 4096, 5001}) {
        YUVBitmap bitmap(width, 5);
        std::vector<uint32_t> words(static_cast<size_t>(bitmap.getBuffer().count()));
        for (auto& word : words) {
            word = static_cast<uint32_t>(random());
        }
        paint(bitmap, words);
        for (const bool interlaced : {false, true}) {
            const OverlayFile file;
            ASSERT_EQ(0, bitmap.savePattern(file, 7, interlaced));
            ASSERT_TRUE(PlainOverlay(bitmap).pattern(7, interlaced) == file.bytes())
                << width << (interlaced ? " interlaced" : "");
        }
    }
}
