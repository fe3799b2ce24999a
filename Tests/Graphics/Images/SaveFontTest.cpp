#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "Tests/Graphics/OverlayFile.h"
#include "Tests/Graphics/PlainOverlay.h"

namespace {

uint32_t luma(int y) {
    return static_cast<uint32_t>(y) << 18;
}

/// Every pixel of one luma.
void paintAll(YUVBitmap& bitmap, int y) {
    paint(bitmap, std::vector<uint32_t>(static_cast<size_t>(bitmap.getBuffer().count()), luma(y)));
}

void paintNoise(YUVBitmap& bitmap, std::mt19937& random) {
    std::vector<uint32_t> words(static_cast<size_t>(bitmap.getBuffer().count()));
    for (auto& word : words) {
        word = static_cast<uint32_t>(random());
    }
    paint(bitmap, words);
}

class SaveFontTest : public testing::Test {
protected:
    YUVBitmap::FontParams at(int column, int row, int perRow) const {
        return {.file = file, .column = column, .row = row, .charactersPerRow = perRow, .id = 0x77};
    }

    OverlayFile file;
    YUVBitmap wide{32, 2};
};

}  // namespace

TEST_F(SaveFontTest, LumaHasFourSteps) {
    const std::pair<int, char> steps[] = {{0, 0},   {63, 0},  {64, 0},  {65, 0},  {282, 0},
                                          {283, 1}, {502, 1}, {503, 2}, {722, 2}, {723, 3},
                                          {942, 3}, {943, 3}, {1023, 3}};
    YUVBitmap pixel(1, 1);
    for (const auto& [y, level] : steps) {
        paintAll(pixel, y);
        EXPECT_EQ(0, pixel.saveFontRaw(at(0, 0, 1), 0));
        EXPECT_EQ(std::string(7, '\0') + level, file.bytes()) << y;
    }
}

TEST_F(SaveFontTest, TheFirstOf32PixelsIsInTheTopBits) {
    std::vector<uint32_t> words(64, luma(64));
    words[0] = luma(940);
    words[1] = luma(300);
    words[2] = luma(600);
    words[63] = luma(300);
    paint(wide, words);
    EXPECT_EQ(0, wide.saveFontRaw(at(0, 0, 1), 0));
    EXPECT_EQ("d8000000 00000000 00000000 00000001\n", hexOf(file.bytes()));
}

TEST_F(SaveFontTest, WideCharactersHaveSeveralGroupsARow) {
    YUVBitmap bitmap(64, 2);
    std::vector<uint32_t> words(128, luma(64));
    words[31] = luma(300);
    words[32] = luma(600);
    words[64] = luma(940);
    paint(bitmap, words);
    EXPECT_EQ(0, bitmap.saveFontRaw(at(0, 0, 1), 0));
    EXPECT_EQ("00000000 00000001 80000000 00000000 c0000000 00000000 00000000 00000000\n",
              hexOf(file.bytes()));
}

TEST_F(SaveFontTest, ALastGroupOfFewerPixelsIsNotPaddedOnTheRightOnPurpose) {
    YUVBitmap bitmap(40, 1);
    paintAll(bitmap, 940);
    EXPECT_EQ(0, bitmap.saveFontRaw(at(0, 0, 1), 0));
    EXPECT_EQ("ffffffff ffffffff 00000000 0000ffff\n", hexOf(file.bytes()));
}

TEST_F(SaveFontTest, ANarrowCharacterWritesOverItsRightNeighbourOnPurpose) {
    YUVBitmap bitmap(16, 1);
    paintAll(bitmap, 940);
    EXPECT_EQ(0, bitmap.saveFontRaw(at(0, 0, 2), 0));
    EXPECT_EQ("00000000 ffffffff\n", hexOf(file.bytes()));
    EXPECT_EQ(0, bitmap.saveFontRaw(at(1, 0, 2), 0));
    EXPECT_EQ("00000000 00000000 ffffffff\n", hexOf(file.bytes()));
}

TEST_F(SaveFontTest, CharactersLieSideBySideRowOfPixelsByRowOfPixels) {
    paintAll(wide, 300);
    EXPECT_EQ(0, wide.saveFontRaw(at(0, 0, 3), 0));
    paintAll(wide, 600);
    EXPECT_EQ(0, wide.saveFontRaw(at(2, 0, 3), 0));
    paintAll(wide, 940);
    EXPECT_EQ(0, wide.saveFontRaw(at(1, 1, 3), 0));
    EXPECT_EQ(hexOf(file.bytes()),
              "55555555 55555555 00000000 00000000 aaaaaaaa aaaaaaaa 55555555 55555555\n"
              "00000000 00000000 aaaaaaaa aaaaaaaa 00000000 00000000 ffffffff ffffffff\n"
              "00000000 00000000 00000000 00000000 ffffffff ffffffff\n");
}

TEST_F(SaveFontTest, TheOffsetIsWhereTheFontBegins) {
    paintAll(wide, 940);
    EXPECT_EQ(0, wide.saveFontAtOffset(at(0, 0, 1), 0, 4));
    EXPECT_EQ("00000000 ffffffff ffffffff ffffffff ffffffff\n", hexOf(file.bytes()));
}

TEST_F(SaveFontTest, TheFirstNumberPlaysNoPart) {
    paintAll(wide, 940);
    EXPECT_EQ(0, wide.saveFontRaw(at(0, 0, 1), 0));
    const std::string bytes = file.bytes();
    for (const int unused : {INT_MIN, -1, 1, INT_MAX}) {
        const OverlayFile other;
        auto params = at(0, 0, 1);
        params.file = other;
        EXPECT_EQ(0, wide.saveFontRaw(params, unused));
        EXPECT_EQ(bytes, other.bytes());
    }
}

TEST_F(SaveFontTest, NothingIsPutAt0x80000ButAt0x80008OnPurpose) {
    YUVBitmap bitmap(32, 3);
    std::vector<uint32_t> words(96, luma(300));
    std::fill(words.begin() + 32, words.begin() + 64, luma(600));
    std::fill(words.begin() + 64, words.end(), luma(940));
    paint(bitmap, words);
    EXPECT_EQ(0, bitmap.saveFontAtOffset(at(0, 0, 2), 0, 0x80000 - 16));
    EXPECT_EQ(hexOf(file.bytes().substr(0x80000 - 16)),
              "55555555 55555555 00000000 00000000 00000000 00000000 aaaaaaaa aaaaaaaa\n"
              "ffffffff ffffffff\n");
}

TEST_F(SaveFontTest, TheAvoidedOffsetCountsFromTheStartOfTheFile) {
    YUVBitmap bitmap(8, 1);
    paintAll(bitmap, 940);
    EXPECT_EQ(0, bitmap.saveFont(at((0x80000 - 12) / 2, 0, 0), 0));
    EXPECT_EQ("00000000 00000000 00000000 0000ffff\n", hexOf(file.bytes().substr(0x80000, 16)));
}

TEST_F(SaveFontTest, Column65WritesANewlineToStandardErrorAfterEachPixelRowOnPurpose) {
    const std::pair<int, std::string> columns[] = {{64, ""}, {65, "\n\n"}, {66, ""}};
    for (const auto& [column, text] : columns) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(0, wide.saveFontRaw(at(column, 0, 70), 0));
        EXPECT_EQ(text, testing::internal::GetCapturedStderr()) << column;
    }
}

TEST_F(SaveFontTest, AFontHasItsBodyAtOffset12AndAHeader) {
    paintAll(wide, 940);
    EXPECT_EQ(0, wide.saveFont(at(0, 0, 1), 0));
    EXPECT_EQ(hexOf(file.bytes()),
              "ffffffff 00000077 00000020 ffffffff ffffffff ffffffff ffffffff 00000000\n"
              "*\n"
              "00000000 00000000 00000000\n");
}

TEST_F(SaveFontTest, CharactersMayBeWrittenInAnyOrder) {
    std::mt19937 random(8);
    std::vector<int> order(12);
    for (int turn = 0; turn < 20; ++turn) {
        const OverlayFile font;
        std::string expected(12, '\0');
        for (int i = 0; i < 12; ++i) {
            order[static_cast<size_t>(i)] = i;
        }
        std::shuffle(order.begin(), order.end(), random);
        for (const int character : order) {
            YUVBitmap bitmap(32, 7);
            paintNoise(bitmap, random);
            auto params = at(character % 4, character / 4, 4);
            params.file = font;
            ASSERT_EQ(0, bitmap.saveFont(params, 0));
            PlainOverlay(bitmap).font(expected, character % 4, character / 4, 4, 12);
            contain(0x77, expected);
            ASSERT_EQ(hexOf(expected), hexOf(font.bytes()));
        }
    }
}

TEST_F(SaveFontTest, ABodyOf128BytesIsNotPadded) {
    YUVBitmap bitmap(32, 16);
    EXPECT_EQ(0, bitmap.saveFont(at(0, 0, 1), 0));
    EXPECT_EQ(140U, file.bytes().size());
}

TEST_F(SaveFontTest, AnEmptyBitmapAddsNothing) {
    EXPECT_EQ(0, YUVBitmap().saveFontRaw(at(0, 0, 1), 0));
    EXPECT_EQ("", file.bytes());
    EXPECT_EQ(0, YUVBitmap().saveFont(at(0, 0, 1), 0));
    EXPECT_EQ("ffffffff 00000077 00000000\n", hexOf(file.bytes()));
}

TEST_F(SaveFontTest, APlaceBeforeTheFileIsAFailedSeek) {
    EXPECT_EQ(-1, wide.saveFontAtOffset(at(0, 0, 1), 0, -1));
    EXPECT_EQ(-1, wide.saveFontRaw(at(-1, 0, 1), 0));
    EXPECT_EQ(-1, wide.saveFontRaw(at(0, -1, 1), 0));
    EXPECT_EQ("", file.bytes());
}

TEST_F(SaveFontTest, APlaceThatNoOffsetHoldsIsTooLarge) {
    YUVBitmap tall(32, 4000);
    EXPECT_EQ(-4, tall.saveFontRaw(at(INT_MAX, INT_MAX, INT_MAX), 0));
    EXPECT_EQ(-4, tall.saveFont(at(INT_MAX, INT_MAX, INT_MIN), 0));
    EXPECT_EQ("", file.bytes());
}

TEST_F(SaveFontTest, ABodyWhoseLengthNoHeaderHoldsIsTooLarge) {
    EXPECT_EQ(-4, wide.saveFont(at(INT_MAX, 0, 1), 0));  // the file has a hole of 16 GB
}

TEST_F(SaveFontTest, RandomCharactersAreWrittenAsPixelByPixel) {
    std::mt19937 random(26);
    for (int turn = 0; turn < 300; ++turn) {
        YUVBitmap bitmap(static_cast<int>(1 + random() % 140), static_cast<int>(1 + random() % 20));
        paintNoise(bitmap, random);
        const int perRow = static_cast<int>(1 + random() % 20);
        const int column = static_cast<int>(random() % static_cast<unsigned>(perRow));
        const int row = static_cast<int>(random() % 4);
        const int offset =
            static_cast<int>(random() % 2 == 0 ? random() % 40 : 0x80000 - 8 * (random() % 64));
        const OverlayFile font;
        auto params = at(column, row, perRow);
        params.file = font;
        ASSERT_EQ(0, bitmap.saveFontAtOffset(params, 0, offset));
        std::string expected;
        PlainOverlay(bitmap).font(expected, column, row, perRow, offset);
        ASSERT_TRUE(expected == font.bytes()) << "turn " << turn;
    }
}
