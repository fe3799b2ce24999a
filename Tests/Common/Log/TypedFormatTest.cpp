#include "Vl/Common/Log/TypedFormat.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

using Valen::Log::BufBase;
using Valen::Log::Number;

template <typename... Arguments>
std::string formatted(const char* text, const Arguments&... arguments) {
    BufBase buffer;
    const char* end = format(buffer, text, arguments...);
    EXPECT_EQ('\0', *end);
    EXPECT_EQ(std::string(buffer.text()).size(), static_cast<std::size_t>(end - buffer.text()));
    return buffer.text();
}

TEST(TypedFormatTest, EachPlaceholderIsReplacedByTheNextArgument) {
    EXPECT_EQ("read 12 of x", formatted("read %? of %?", 12, "x"));
    EXPECT_EQ("a1b", formatted("%?%?%?", "a", 1, std::string("b")));
}

TEST(TypedFormatTest, EveryIntegerIsWrittenWithItsOwnSign) {
    EXPECT_EQ("-1 255 -32768 4294967295", formatted("%? %? %? %?", std::int8_t{-1}, std::uint8_t{255},
                                                    std::int16_t{-32768}, 4294967295U));
    EXPECT_EQ(
        "-9223372036854775808 18446744073709551615",
        formatted("%? %?", std::numeric_limits<long long>::min(), std::numeric_limits<unsigned long>::max()));
    EXPECT_EQ("1 0", formatted("%? %?", true, false));
}

TEST(TypedFormatTest, ACharacterIsWrittenAsItself) {
    EXPECT_EQ("yes: y", formatted("yes: %?", 'y'));
    EXPECT_EQ("\xFF", formatted("%?", '\xFF'));
}

template <typename Argument>
concept Written = requires(BufBase& buffer, const Argument& argument) {
    putArgument(buffer, buffer.begin(), argument);
};
enum AnyEnumeration : int {};

TEST(TypedFormatTest, WhatIsNoTextAndNoIntegerDoesNotCompile) {
    static_assert(Written<char> && Written<bool> && Written<std::uint64_t> && Written<char[3]>);
    static_assert(Written<std::string> && Written<const char*> && Written<Number<short>>);
    static_assert(!Written<double> && !Written<AnyEnumeration> && !Written<void*> && !Written<int*>);
}

TEST(TypedFormatTest, ANumberIsWrittenInItsGivenWay) {
    EXPECT_EQ("0x00ff,   -5, 1F", formatted("0x%?, %?, %?", Number(255, 0x10000 | 0x40000 | 4),
                                            Number(-5L, 4), Number(std::uint8_t{31}, 0x30000)));
}

TEST(TypedFormatTest, PlaceholdersWithoutAnArgumentStay) {
    EXPECT_EQ("%? and %?", formatted("%? and %?"));
    EXPECT_EQ("1 and %?!", formatted("%? and %?!", 1));
}

TEST(TypedFormatTest, ArgumentsWithoutAPlaceholderAreLeftOut) {
    EXPECT_EQ("only 1", formatted("only %?", 1, "two", 3));
    EXPECT_EQ("", formatted("", 1));
}

TEST(TypedFormatTest, PlaceholdersInAnArgumentAreText) {
    EXPECT_EQ("%? 2 %%", formatted("%? %? %?", "%?", 2, "%%"));
}

TEST(TypedFormatTest, AFullBufferTakesNoFurtherArgument) {
    const std::string filling(510, 'x');
    EXPECT_EQ(filling + "1", formatted("%?%?%?", filling, 12, 3));
    EXPECT_EQ(filling + "x", formatted((filling + "xx%?").c_str(), 12));
}

TEST(TypedFormatTest, ABufferIsWrittenAnewFromItsBeginning) {
    BufBase buffer;
    format(buffer, "a long %?", "text");
    format(buffer, "%?", 7);
    EXPECT_STREQ("7", buffer.text());
}

}  // namespace
