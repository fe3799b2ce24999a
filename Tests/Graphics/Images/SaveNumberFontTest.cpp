#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "Tests/Graphics/OverlayFile.h"
#include "Tests/Graphics/PlainOverlay.h"

namespace {

/// '#' is a pixel that is set, anything else one that is not.
void draw(YUVBitmap& bitmap, const std::string& pixels) {
    std::vector<uint32_t> words;
    for (const char pixel : pixels) {
        words.push_back((pixel == '#' ? 198U : 197U) << 18);
    }
    ASSERT_EQ(static_cast<size_t>(bitmap.getBuffer().count()), words.size());
    paint(bitmap, words);
}

class SaveNumberFontTest : public testing::Test {
protected:
    YUVBitmap::FontParams at(int column, int row, int perRow) const {
        return {.file = file, .column = column, .row = row, .charactersPerRow = perRow, .id = 0x99};
    }

    OverlayFile file;
};

const std::string kSet32(32, '#');

}  // namespace

TEST_F(SaveNumberFontTest, APixelIsSetAboveLuma197) {
    YUVBitmap bitmap(32, 1);
    std::vector<uint32_t> words(32, 0x3ffffU | 0xf0000000U);
    words[28] = 197U << 18;
    words[29] = 198U << 18;
    words[30] = 1023U << 18;
    words[31] = 64U << 18;
    paint(bitmap, words);
    EXPECT_EQ(0, bitmap.saveNumberFontRaw(at(0, 0, 1)));
    EXPECT_EQ("00000006\n", hexOf(file.bytes()));
}

TEST_F(SaveNumberFontTest, TheFirstOf32PixelsIsTheTopBit) {
    YUVBitmap bitmap(32, 2);
    draw(bitmap,
         "#.......#.#....................."
         "...............................#");
    EXPECT_EQ(0, bitmap.saveNumberFontRaw(at(0, 0, 1)));
    EXPECT_EQ("80a00000 00000001\n", hexOf(file.bytes()));
}

TEST_F(SaveNumberFontTest, OnlyCharactersOf32PixelsKeepAllTheirBitsOnPurpose) {
    const std::pair<int, std::string> widths[] = {
        {7, ""},          {8, "00\n"},        {15, "00\n"},       {24, "00ffff\n"},
        {31, "7fffff\n"}, {32, "ffffffff\n"}, {39, "ffffffff\n"}, {40, "ffffffff\n"}};
    for (const auto& [width, bytes] : widths) {
        const OverlayFile font;
        YUVBitmap bitmap(width, 1);
        draw(bitmap, std::string(static_cast<size_t>(width), '#'));
        auto params = at(0, 0, 1);
        params.file = font;
        EXPECT_EQ(0, bitmap.saveNumberFontRaw(params));
        EXPECT_EQ(bytes, hexOf(font.bytes())) << width;
    }
}

TEST_F(SaveNumberFontTest, AWiderCharacterKeepsTheLast32PixelsOfEachRow) {
    YUVBitmap bitmap(40, 2);
    draw(bitmap, std::string(8, '#') + std::string(31, '.') + "#" +  //
                     std::string(8, '#') + "#" + std::string(31, '.'));
    EXPECT_EQ(0, bitmap.saveNumberFontRaw(at(0, 0, 1)));
    EXPECT_EQ("00000001 00800000 00\n", hexOf(file.bytes()));
}

TEST_F(SaveNumberFontTest, RowsOfTwoBytesChangePlacesInPairsOnPurpose) {
    YUVBitmap bitmap(17, 1);
    draw(bitmap, std::string(17, '#'));  // the value is 0001ffff, its first two bytes 0001
    EXPECT_EQ(0, bitmap.saveNumberFontRaw(at(0, 0, 2)));
    EXPECT_EQ("00000001\n", hexOf(file.bytes()));
    EXPECT_EQ(0, bitmap.saveNumberFontRaw(at(3, 0, 4)));
    EXPECT_EQ("00000001 0001\n", hexOf(file.bytes()));
}

TEST_F(SaveNumberFontTest, TheSwapOfTwoByteRowsCountsFromTheStartOfTheFile) {
    YUVBitmap bitmap(17, 1);
    draw(bitmap, std::string(17, '#'));
    EXPECT_EQ(0, bitmap.saveNumberFontAtOffset(at(0, 0, 1), 6));
    EXPECT_EQ("00000000 0001\n", hexOf(file.bytes()));
}

TEST_F(SaveNumberFontTest, ARowOfCharactersBeginsAtAPowerOfTwo) {
    const std::tuple<int, int, size_t> starts[] = {{1, 3, 3}, {2, 3, 6},  {3, 1, 4},  {4, 1, 4},
                                                   {5, 1, 8}, {8, 2, 16}, {9, 2, 32}, {16, 1, 16}};
    for (const auto& [height, row, firstRow] : starts) {
        const OverlayFile font;
        YUVBitmap bitmap(32, height);
        std::string picture;
        for (int i = 0; i < height; ++i) {
            picture += kSet32;
        }
        draw(bitmap, picture);
        auto params = at(1, row, 3);
        params.file = font;
        EXPECT_EQ(0, bitmap.saveNumberFontRaw(params));
        EXPECT_EQ(std::string::npos, font.bytes().substr(0, (firstRow * 3 + 1) * 4).find('\xff'));
        EXPECT_EQ("ffffffff\n", hexOf(font.bytes().substr((firstRow * 3 + 1) * 4, 4))) << height;
    }
}

TEST_F(SaveNumberFontTest, ANumberFontHasItsBodyAtOffset12AndAHeader) {
    YUVBitmap bitmap(32, 2);
    draw(bitmap, kSet32 + kSet32);
    EXPECT_EQ(0, bitmap.saveNumberFont(at(1, 0, 2)));
    EXPECT_EQ(hexOf(file.bytes()),
              "ffffffff 00000099 00000020 00000000 ffffffff 00000000 ffffffff 00000000\n"
              "*\n"
              "00000000 00000000 00000000\n");
    EXPECT_EQ(0, bitmap.saveNumberFont(at(0, 0, 2)));
    EXPECT_EQ("ffffffff 00000099 00000020 ffffffff ffffffff ffffffff ffffffff 00000000\n",
              hexOf(file.bytes().substr(0, 32)));
}

TEST_F(SaveNumberFontTest, ABodyOfOddLengthIsPaddedTo128BytesToo) {
    YUVBitmap bitmap(24, 3);
    EXPECT_EQ(0, bitmap.saveNumberFont(at(0, 0, 1)));
    EXPECT_EQ(140U, file.bytes().size());
    EXPECT_EQ("00000020", hexOf(file.bytes()).substr(18, 8));
}

TEST_F(SaveNumberFontTest, NoNewlineIsWrittenForColumn65) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(0, YUVBitmap(32, 2).saveNumberFontRaw(at(65, 0, 70)));
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST_F(SaveNumberFontTest, AnEmptyBitmapAddsNothing) {
    EXPECT_EQ(0, YUVBitmap().saveNumberFontRaw(at(0, 3, 1)));
    EXPECT_EQ("", file.bytes());
}

TEST_F(SaveNumberFontTest, APlaceBeforeTheFileIsAFailedSeek) {
    EXPECT_EQ(-1, YUVBitmap(32, 2).saveNumberFontAtOffset(at(0, 0, 1), -1));
    EXPECT_EQ(-1, YUVBitmap(32, 2).saveNumberFontRaw(at(-1, 0, 1)));
    EXPECT_EQ(-1, YUVBitmap(32, 2).saveNumberFontRaw(at(0, INT_MIN, 1)));
}

TEST_F(SaveNumberFontTest, APlaceThatNoOffsetHoldsIsTooLarge) {
    YUVBitmap tall(32, 4000);
    EXPECT_EQ(-4, tall.saveNumberFontRaw(at(INT_MAX, INT_MAX, INT_MAX)));
    EXPECT_EQ(-4, tall.saveNumberFont(at(INT_MIN, INT_MAX, INT_MIN)));
    EXPECT_EQ("", file.bytes());
}

TEST_F(SaveNumberFontTest, RandomCharactersAreWrittenAsPixelByPixel) {
    std::mt19937 random(27);
    for (int turn = 0; turn < 300; ++turn) {
        const auto width = static_cast<int>(8 + random() % 28);
        YUVBitmap bitmap(width, static_cast<int>(1 + random() % 20));
        std::vector<uint32_t> words(static_cast<size_t>(bitmap.getBuffer().count()));
        for (auto& word : words) {
            word = static_cast<uint32_t>(random());
        }
        paint(bitmap, words);
        const int perRow = static_cast<int>(1 + random() % 20);
        const int column = static_cast<int>(random() % static_cast<unsigned>(perRow));
        const int row = static_cast<int>(random() % 4);
        const OverlayFile font;
        auto params = at(column, row, perRow);
        params.file = font;
        ASSERT_EQ(0, bitmap.saveNumberFont(params));
        std::string expected;
        PlainOverlay(bitmap).numberFont(expected, column, row, perRow, 12);
        contain(0x99, expected);
        ASSERT_EQ(hexOf(expected), hexOf(font.bytes()));
    }
}
