// The two ways to store characters, byte by byte.
#include <gmock/gmock.h>

#include <string>

#include "Tests/overlayview/OverlayBytes.h"
#include "Tools/overlayview/FontFormat.h"
#include "Tools/overlayview/GlyphSheet.h"
#include "Tools/overlayview/NumberFormat.h"

namespace {

using overlays::bytes;
using overlays::File;
using overlayview::FontFormat;
using overlayview::GlyphFormat;
using overlayview::GlyphRow;
using overlayview::GlyphSheet;
using overlayview::NumberFormat;
using overlayview::SheetLayout;

std::string rowOf(const GlyphFormat& format, const File& file, const SheetLayout& layout, const GlyphRow& row,
                  std::size_t offset = 0) {
    std::vector<std::uint8_t> levels(layout.cell.width, 9);
    format.readRow(file, offset, layout, row, levels.data());
    std::string text;
    for (const std::uint8_t level : levels) {
        text += static_cast<char>('0' + level);
    }
    return text;
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

TEST(FontFormatTest, ThirtyTwoPixelsOfTwoBitsAreEightBytesTheFirstOnTop) {
    // 0x1B = 00 01 10 11
    const File file = bytes({0x1B, 0, 0, 0, 0, 0, 0, 0xE4});
    EXPECT_EQ("0123" + std::string(24, '0') + "3210", rowOf(FontFormat(), file, {{32, 1}, 1}, {}));
}

TEST(FontFormatTest, RowsOfACharacterLieARowOfCharactersApart) {
    File file(8 * 2 * 2 * 3);  // two columns of 32 pixels, two rows each, three rows of characters
    file[8 * (2 * (2 * 2 + 1) + 1)] = std::byte{0xC0};
    const SheetLayout layout{{32, 2}, 2};
    EXPECT_EQ('3', rowOf(FontFormat(), file, layout, {2, 1, 1})[0]);
    EXPECT_EQ('0', rowOf(FontFormat(), file, layout, {2, 1, 0})[0]);
    EXPECT_EQ(32U, FontFormat().bytesPerCharRow(layout));
}

TEST(FontFormatTest, AWideCharacterHasSeveralGroupsInARow) {
    File file(16);
    file[8] = std::byte{0x40};
    EXPECT_EQ(std::string(32, '0') + "1" + std::string(31, '0'), rowOf(FontFormat(), file, {{64, 1}, 1}, {}));
}

TEST(FontFormatTest, ALastGroupOfFewerPixelsIsRightAligned) {
    const File file = bytes({0xFF, 0xFF, 0x1B, 0x1B, 0x1B, 0x1B, 0x1B, 0x1B});
    EXPECT_EQ(repeated("0123", 6), rowOf(FontFormat(), file, {{24, 1}, 1}, {}));
    EXPECT_FALSE(FontFormat().keepsAll(24));
    EXPECT_TRUE(FontFormat().keepsAll(64));
}

TEST(FontFormatTest, TheGroupForAddress80000IsReadFrom80008) {
    File file(0x80010);
    file[0x80000] = std::byte{0x55};
    file[0x80008] = std::byte{0xAA};
    const SheetLayout layout{{32, 1}, 1};
    EXPECT_EQ("2222", rowOf(FontFormat(), file, layout, {0x10000, 0, 0}).substr(0, 4));
    EXPECT_EQ("2222", rowOf(FontFormat(), file, layout, {0x10001, 0, 0}).substr(0, 4));
    EXPECT_EQ("1111", rowOf(FontFormat(), file, layout, {0, 0, 0}, 0x80000 - 4).substr(16, 4))
        << "only that very address";
}

TEST(FontFormatTest, WhatTheFileDoesNotHaveIsBlank) {
    const File file = bytes({0xFF});
    EXPECT_EQ("3333" + std::string(28, '0'), rowOf(FontFormat(), file, {{32, 1}, 1}, {}));
    EXPECT_EQ(std::string(32, '0'),
              rowOf(FontFormat(), file, {{32, 4096}, 65535}, {UINT32_MAX, 65534, 4095}));
}

TEST(NumberFormatTest, ThirtyTwoPixelsAreFourBytesTheFirstOnTop) {
    const File file = bytes({0x80, 0, 0x0F, 0x01});
    EXPECT_EQ("10000000000000000000111100000001", rowOf(NumberFormat(), file, {{32, 1}, 1}, {}));
    EXPECT_TRUE(NumberFormat().keepsAll(32));
}

TEST(NumberFormatTest, RowsOfCharactersLieAPowerOfTwoApart) {
    const SheetLayout layout{{32, 5}, 3};
    EXPECT_EQ(4U * 3 * 8, NumberFormat().bytesPerCharRow(layout));
    EXPECT_EQ(4U * 3 * 8, NumberFormat().bytesPerCharRow({{32, 8}, 3}));
    EXPECT_EQ(4U * 3, NumberFormat().bytesPerCharRow({{32, 1}, 3}));
    File file(4 * 3 * 16);
    file[4 * (3 * (8 + 4) + 2)] = std::byte{0x80};
    EXPECT_EQ('1', rowOf(NumberFormat(), file, layout, {1, 2, 4})[0]);
}

TEST(NumberFormatTest, NarrowCharactersLoseTheirLastPixelsOnPurpose) {
    // 24 pixels: of the word 00 A5 C3 xx the file has three bytes
    const File file = bytes({0, 0xA5, 0xC3});
    EXPECT_EQ("101001011100001100000000", rowOf(NumberFormat(), file, {{24, 1}, 1}, {}));
    EXPECT_FALSE(NumberFormat().keepsAll(24));
}

TEST(NumberFormatTest, HalvesOfWordsAreSwappedWhereACharacterHasTwoBytesARow) {
    // Of 16 pixels the file keeps the empty upper half, so only what should be empty shows which bytes are
    // read.
    const SheetLayout layout{{23, 1}, 2};  // 23 pixels keep two bytes as well: pixels 0 to 6
    const File file = bytes({0, 0x40, 0, 0x7F});
    EXPECT_EQ("1111111" + std::string(16, '0'), rowOf(NumberFormat(), file, layout, {0, 0, 0}));
    EXPECT_EQ("1000000" + std::string(16, '0'), rowOf(NumberFormat(), file, layout, {0, 1, 0}));
    EXPECT_EQ("1000000" + std::string(16, '0'), rowOf(NumberFormat(), file, layout, {0, 0, 0}, 2));
}

TEST(GlyphSheetTest, CharactersStandBesideAndBelowEachOther) {
    // 32x1 cells, two columns, two rows of characters
    const File file = bytes({1, 0, 0, 0, 2, 0, 0, 0, 4, 0, 0, 0, 8, 0, 0, 0});
    const NumberFormat format;
    const GlyphSheet sheet(format, file, 0, {{32, 1}, 2});
    EXPECT_EQ(2U, sheet.rows());
    EXPECT_EQ(128U, sheet.pixels());
    EXPECT_EQ((overlayview::Size{64, 2}), sheet.size());
    const std::vector<std::uint8_t> levels = sheet.levels();
    for (std::size_t i = 0; i < levels.size(); ++i) {
        EXPECT_EQ(i == 7 || i == 32 + 6 || i == 64 + 5 || i == 96 + 4 ? 1 : 0, levels[i]) << i;
    }
    EXPECT_EQ((overlayview::Rgba{255, 255, 255, 255}), sheet.picture().pixels[7]);
    EXPECT_EQ((overlayview::Rgba{0, 0, 0, 255}), sheet.picture().pixels[8]);
}

TEST(GlyphSheetTest, PaddingMakesNoRowButAnIncompleteRowDoes) {
    const FontFormat format;
    const SheetLayout layout{{32, 8}, 4};  // 256 bytes a row
    File file(256 + 127);
    EXPECT_EQ(1U, GlyphSheet(format, file, 0, layout).rows());
    file.resize(256 + 128);
    EXPECT_EQ(2U, GlyphSheet(format, file, 0, layout).rows()) << "padding is shorter";
    file.resize(256 + 1);
    file.back() = std::byte{1};
    EXPECT_EQ(2U, GlyphSheet(format, file, 0, layout).rows());
    EXPECT_EQ(0U, GlyphSheet(format, file, 257, layout).rows());
}

TEST(GlyphSheetTest, LevelsAreShadesOfGrey) {
    const File file = bytes({0x1B, 0, 0, 0, 0, 0, 0, 0});
    const FontFormat format;
    const overlayview::Picture picture = GlyphSheet(format, file, 0, {{32, 1}, 1}).picture();
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(85 * i, picture.pixels[i].red);
    }
}

}  // namespace
