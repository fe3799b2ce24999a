#include "Vl/Common/Strings/NumberParsing.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <functional>
#include <optional>

namespace {

using testing::Pair;

// Whole texts

TEST(StringToLongTest, ReadsDigitsOfTheBase) {
    EXPECT_THAT(Valen::stringToLong("12", 10), Pair(true, 12));
    EXPECT_THAT(Valen::stringToLong("-ff", 16), Pair(true, -255));
    EXPECT_THAT(Valen::stringToLong("  +101", 2), Pair(true, 5));
    EXPECT_THAT(Valen::stringToLong("12 apples", 10), Pair(true, 12));
    EXPECT_THAT(Valen::stringToLong("0", 10), Pair(true, 0));
}

TEST(StringToLongTest, WithoutDigitsItIsNotOk) {
    EXPECT_THAT(Valen::stringToLong("", 10), Pair(false, 0));
    EXPECT_THAT(Valen::stringToLong("apples", 10), Pair(false, 0));
    EXPECT_THAT(Valen::stringToLong(" -", 10), Pair(false, 0));
    EXPECT_THAT(Valen::stringToLong("2", 2), Pair(false, 0));
}

TEST(StringToLongTest, WithABaseThatThereIsNotItIsNotOk) {
    for (const int base : {-1, 1, 37, INT_MAX}) {
        EXPECT_THAT(Valen::stringToLong("1", base), Pair(false, 0)) << base;
    }
}

TEST(StringToLongTest, TooLargeANumberBecomesTheLargest) {
    EXPECT_THAT(Valen::stringToLong("99999999999999999999999", 10), Pair(true, LONG_MAX));
    EXPECT_THAT(Valen::stringToLong("-99999999999999999999999", 10), Pair(true, LONG_MIN));
    EXPECT_EQ(errno, ERANGE);
}

constexpr const char* kNumbers[] = {"0",
                                    "7",
                                    "0x1F",
                                    "0X1f",
                                    "017",
                                    "08",
                                    "0x",
                                    "-1",
                                    " 42\n",
                                    "1e3",
                                    "12.5",
                                    "+0x10",
                                    "-010",
                                    "4294967296",
                                    "18446744073709551615",
                                    "18446744073709551616"};

TEST(StringToULongTest, ReadsWhatTheLibraryReadsWithAnyPrefix) {
    for (const char* text : kNumbers) {
        EXPECT_THAT(Valen::stringToULong(text), Pair(true, std::strtoul(text, nullptr, 0))) << text;
    }
    EXPECT_THAT(Valen::stringToULong("0x1F"), Pair(true, 31U));
    EXPECT_THAT(Valen::stringToULong("017"), Pair(true, 15U));
    EXPECT_THAT(Valen::stringToULong("17"), Pair(true, 17U));
}

TEST(StringToLongTest, HexadecimalIsTheLibrarys) {
    for (const char* text : kNumbers) {
        EXPECT_THAT(Valen::stringToLong(text, 16), Pair(true, std::strtol(text, nullptr, 16))) << text;
    }
}

TEST(StringToULongTest, WithoutDigitsItIsNotOk) {
    for (const char* text : {"", " ", "x1", "-", "none"}) {
        EXPECT_THAT(Valen::stringToULong(text), Pair(false, 0U)) << text;
    }
}

// Cursors

/// The int that `action` throws; nothing when it throws none.
std::optional<int> thrownBy(const std::function<void()>& action) {
    try {
        action();
    } catch (int thrown) {
        return thrown;
    }
    return std::nullopt;
}

TEST(CursorTest, TheCursorMovesOverNumberAndTerminator) {
    const char* cursor = "12.5";
    EXPECT_EQ(Valen::stringToLong(&cursor, '.', 10), 12);
    EXPECT_STREQ(cursor, "5");
    EXPECT_EQ(Valen::stringToLong(&cursor, '\0', 10), 5);
}

TEST(CursorTest, AnotherTerminatorThrowsZeroAndLeavesTheCursor) {
    const char* cursor = "12-5";
    EXPECT_EQ(thrownBy([&] { Valen::stringToLong(&cursor, '.', 10); }), 0);
    EXPECT_STREQ(cursor, "12-5");
}

TEST(CursorTest, TheEndOfTheTextIsNotATerminatorUnlessAskedFor) {
    const char* cursor = "12";
    EXPECT_EQ(thrownBy([&] { Valen::stringToLong(&cursor, '.', 10); }), 0);
}

TEST(CursorTest, WithoutDigitsItThrowsZeroWhateverTheTerminator) {
    for (const int terminator : {-1, static_cast<int>('.'), 0}) {
        for (const char* text : {"", ".5", "x", "-"}) {
            const char* cursor = text;
            EXPECT_EQ(thrownBy([&] { Valen::stringToLong(&cursor, terminator, 10); }), 0) << text;
            EXPECT_EQ(cursor, text);
        }
    }
}

TEST(CursorTest, WithABaseThatThereIsNotItThrowsZero) {
    const char* cursor = "12.5";
    EXPECT_EQ(thrownBy([&] { Valen::stringToLong(&cursor, '.', 99); }), 0);
}

TEST(CursorTest, MinusOneAcceptsAnyCharacter) {
    const char* cursor = "12-5";
    EXPECT_EQ(Valen::stringToLong(&cursor, -1, 10), 12);
    EXPECT_STREQ(cursor, "5");
}

TEST(CursorTest, TheCursorMovesOverTheEndOfTheTextTooOnPurpose) {
    const char text[] = "0b";
    const char* cursor = text;
    EXPECT_EQ(Valen::stringToLong(&cursor, '\0', 16), 11);
    EXPECT_EQ(cursor, text + 3);
    cursor = text;
    EXPECT_EQ(Valen::stringToLong(&cursor, -1, 16), 11);
    EXPECT_EQ(cursor, text + 3);
}

TEST(CursorTest, TerminatorsAbove127AreCharactersLikeOthers) {
    const char* signedCursor = "12\xE4 5";
    EXPECT_EQ(Valen::stringToLong(&signedCursor, static_cast<signed char>('\xE4'), 10), 12);
    const char* unsignedCursor = "12\xE4 5";
    EXPECT_EQ(Valen::stringToLong(&unsignedCursor, 0xE4, 10), 12);
    EXPECT_STREQ(unsignedCursor, " 5");
}

TEST(CursorTest, NumbersFollowOneAnother) {
    const char* cursor = "-02:0x5E: 7";
    EXPECT_EQ(Valen::stringToLong(&cursor, ':', 16), -2);
    EXPECT_EQ(Valen::stringToLong(&cursor, ':', 16), 0x5E);
    EXPECT_EQ(Valen::stringToLong(&cursor, '\0', 16), 7);
}

TEST(CmpPartialStringTest, MovesOverTheExpectedText) {
    const char* cursor = "Version 12";
    EXPECT_EQ(Valen::CmpPartialString(&cursor, "Version "), 0);
    EXPECT_STREQ(cursor, "12");
    EXPECT_EQ(Valen::CmpPartialString(&cursor, "12"), 0);
    EXPECT_STREQ(cursor, "");
}

TEST(CmpPartialStringTest, NothingIsAlwaysThere) {
    const char* cursor = "";
    EXPECT_EQ(Valen::CmpPartialString(&cursor, ""), 0);
    EXPECT_STREQ(cursor, "");
}

TEST(CmpPartialStringTest, AnotherTextThrowsZeroAndLeavesTheCursor) {
    for (const char* text : {"", "V", "version 12", "Version"}) {
        const char* cursor = text;
        EXPECT_EQ(thrownBy([&] { Valen::CmpPartialString(&cursor, "Version "); }), 0) << text;
        EXPECT_EQ(cursor, text);
    }
}

}  // namespace
