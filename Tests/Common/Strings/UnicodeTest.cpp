#include "Vl/Common/Strings/Unicode.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

std::string utf8Of(const Bytes& text) {
    return Valen::ascii2utf8(text.data(), static_cast<int>(text.size()));
}

std::u16string utf16Of(const Bytes& bytes) {
    return Valen::utf16lebuffer_to_u16_platform_string(bytes.data(), static_cast<long>(bytes.size()));
}

TEST(Ascii2Utf8Test, SevenBitTextStaysAsItIs) {
    Bytes text;
    std::string expected;
    for (int character = 0; character < 0x80; ++character) {
        text.push_back(static_cast<unsigned char>(character));
        expected.push_back(static_cast<char>(character));
    }
    EXPECT_EQ(utf8Of(text), expected);
}

TEST(Ascii2Utf8Test, EightBitCharactersAreThoseOfLatin1) {
    EXPECT_EQ(utf8Of({'2', '3', 0xB0, 'C'}), "23\u00B0C");
    EXPECT_EQ(utf8Of({0x80, 0xBF, 0xC0, 0xFF}), "\xC2\x80\xC2\xBF\xC3\x80\xC3\xBF");
}

TEST(Ascii2Utf8Test, NoTextIsEmpty) {
    const unsigned char text[] = {'a'};
    EXPECT_EQ(Valen::ascii2utf8(text, 0), "");
    EXPECT_EQ(Valen::ascii2utf8(text, -1), "");
    EXPECT_EQ(Valen::ascii2utf8(nullptr, 3), "");
}

TEST(Utf16Test, UnitsBeginWithTheLowByte) {
    EXPECT_EQ(utf16Of({'A', 0x00, 0xE4, 0x00, 0xAC, 0x20}), u"A\u00E4\u20AC");
}

TEST(Utf16Test, SurrogatesStayTwoUnits) {
    EXPECT_EQ(utf16Of({0x3D, 0xD8, 0x00, 0xDE}), u"\U0001F600");
    EXPECT_EQ(utf16Of({0x3D, 0xD8}), std::u16string(1, char16_t{0xD83D})) << "an unpaired one too";
}

TEST(Utf16Test, AByteOrderMarkAtTheFrontIsDropped) {
    EXPECT_EQ(utf16Of({0xFF, 0xFE, 'A', 0x00}), u"A");
    EXPECT_EQ(utf16Of({0xFF, 0xFE}), u"");
    EXPECT_EQ(utf16Of({'A', 0x00, 0xFF, 0xFE}), u"A\uFEFF") << "elsewhere it is a character";
    EXPECT_EQ(utf16Of({0xFF, 0xFE, 0xFF, 0xFE}), u"\uFEFF") << "only the first is dropped";
    EXPECT_EQ(utf16Of({0xFE, 0xFF, 0x00, 'A'}), std::u16string({char16_t{0xFFFE}, char16_t{0x4100}}))
        << "the bytes are never taken for big-endian ones";
}

TEST(Utf16Test, TheOddByteAtTheEndIsDropped) {
    EXPECT_EQ(utf16Of({'A', 0x00, 'B'}), u"A");
    EXPECT_EQ(utf16Of({'A'}), u"");
}

TEST(Utf16Test, ZerosAreCharacters) {
    EXPECT_EQ(utf16Of({'A', 0, 0, 0, 'B', 0}), std::u16string(u"A\0B", 3));
}

TEST(Utf16Test, TheBufferMayBeUnaligned) {
    const Bytes bytes = {0, 'A', 0, 'B', 0};
    EXPECT_EQ(Valen::utf16lebuffer_to_u16_platform_string(bytes.data() + 1, 4), u"AB");
}

TEST(Utf16Test, NoTextIsEmpty) {
    const unsigned char text[] = {'a', 0};
    EXPECT_EQ(Valen::utf16lebuffer_to_u16_platform_string(text, 0), u"");
    EXPECT_EQ(Valen::utf16lebuffer_to_u16_platform_string(text, -2), u"");
    EXPECT_EQ(Valen::utf16lebuffer_to_u16_platform_string(nullptr, 2), u"");
}

}  // namespace
