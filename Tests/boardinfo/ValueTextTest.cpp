#include "Tools/boardinfo/ValueText.h"

#include <gtest/gtest.h>

namespace {

using namespace boardinfo;

TEST(ValueTextTest, NumbersAreShortAndExact) {
    EXPECT_EQ("-5 °C", valueText(std::int64_t{-5}, "°C"));
    EXPECT_EQ("31.25 °C", valueText(31.25, "°C"));
    EXPECT_EQ("0.1", valueText(0.1, ""));
    EXPECT_EQ("42", valueText(42.0, ""));
    EXPECT_EQ("-9223372036854775808", valueText(std::int64_t{INT64_MIN}, ""));
}

TEST(ValueTextTest, YesAndNoAndLists) {
    EXPECT_EQ("yes", valueText(true, ""));
    EXPECT_EQ("no", valueText(false, ""));
    EXPECT_EQ("a b", valueText(std::vector<std::string>{"a", "b"}, ""));
    EXPECT_EQ("none", valueText(std::vector<std::string>{}, ""));
}

TEST(ValueTextTest, NothingFromOutsideControlsATerminal) {
    EXPECT_EQ("a?[2Jb", printable("a\033[2Jb"));
    EXPECT_EQ("???", printable("\n\r\x7F"));
    EXPECT_EQ("?", printable("\xC2\x9B")) << "CSI, as one code point";
    EXPECT_EQ("é€😀", printable("é€😀"));
}

TEST(ValueTextTest, WhatIsNoUtf8BecomesQuestionMarks) {
    EXPECT_EQ("?", printable("\xFF"));
    EXPECT_EQ("?(", printable("\xC3\x28"));
    EXPECT_EQ("?", printable("\xC3")) << "cut off";
    EXPECT_EQ("??", printable("\xC0\x80")) << "overlong";
    EXPECT_EQ("???", printable("\xE0\x80\x80")) << "overlong";
    EXPECT_EQ("???", printable("\xED\xA0\x80")) << "a surrogate";
    EXPECT_EQ("????", printable("\xF4\x90\x80\x80")) << "behind the last code point";
}

TEST(ValueTextTest, ColumnsAreCodePoints) {
    EXPECT_EQ(5U, columns("47 °C"));
    EXPECT_EQ(0U, columns(""));
}

TEST(ValueTextTest, HexadecimalNumbersHaveTheirDigits) {
    EXPECT_EQ("0x000000AB", hexText(0xAB, 8));
    EXPECT_EQ("0xABCDE", hexText(0xABCDE, 2));
    EXPECT_EQ("0xFFFFFFFFFFFFFFFF", hexText(UINT64_MAX, 14));
}

}  // namespace
