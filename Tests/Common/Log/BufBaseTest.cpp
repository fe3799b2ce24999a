#include "Vl/Common/Log/BufBase.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

namespace {

using Valen::Log::BufBase;

constexpr int kHexadecimal = 0x10000;
constexpr int kUpperCase = 0x20000;
constexpr int kZeroFill = 0x40000;

TEST(BufBaseTest, PiecesStandBehindEachOther) {
    BufBase buffer;
    char* at = buffer.put(buffer.begin(), "one");
    EXPECT_EQ(buffer.begin() + 3, at);
    EXPECT_EQ(buffer.begin() + 8, buffer.put(at, " more"));
    EXPECT_STREQ("one more", buffer.text());
}

TEST(BufBaseTest, WhatDoesNotFitIsCutAt511Characters) {
    BufBase buffer;
    char* at = buffer.put(buffer.begin(), std::string(600, 'x').c_str());
    EXPECT_EQ(buffer.begin() + 511, at);
    EXPECT_EQ(at, buffer.put(at, "y"));
    EXPECT_EQ(at, buffer.putInt64(at, -1, 5));
    EXPECT_EQ(at, buffer.process(at, "z").at);
    EXPECT_EQ(std::string(511, 'x'), buffer.text());
}

struct NumberRow {
    std::int64_t value;
    int flags;
    const char* text;
};

class BufBaseNumberTest : public testing::TestWithParam<NumberRow> {};

TEST_P(BufBaseNumberTest, IsWrittenAsItsFlagsSay) {
    const auto [value, flags, text] = GetParam();
    BufBase buffer;
    const std::string expected = text;
    EXPECT_EQ(buffer.begin() + expected.size(), buffer.putInt64(buffer.begin(), value, flags));
    EXPECT_EQ(expected, buffer.text());
    EXPECT_EQ(buffer.begin() + expected.size(), buffer.putLong(buffer.begin(), value, flags));
    EXPECT_EQ(expected, buffer.text());
    if (value >= 0) {
        const auto number = static_cast<std::uint64_t>(value);
        EXPECT_EQ(buffer.begin() + expected.size(), buffer.putUInt64(buffer.begin(), number, flags));
        EXPECT_EQ(expected, buffer.text());
        EXPECT_EQ(buffer.begin() + expected.size(), buffer.putULong(buffer.begin(), number, flags));
        EXPECT_EQ(expected, buffer.text());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, BufBaseNumberTest,
    testing::Values(NumberRow{0, 0, "0"}, NumberRow{1234567890, 0, "1234567890"}, NumberRow{5, 5, "    5"},
                    NumberRow{5, kZeroFill | 5, "00005"}, NumberRow{12345, 3, "12345"},
                    NumberRow{-5, 5, "   -5"}, NumberRow{-5, kZeroFill | 5, "-0005"},
                    NumberRow{-12345, 5, "-12345"}, NumberRow{-1234, kZeroFill | 5, "-1234"},
                    NumberRow{0xBEEF, kHexadecimal, "beef"},
                    NumberRow{0xBEEF, kHexadecimal | kUpperCase, "BEEF"},
                    NumberRow{0xBEEF, kHexadecimal | kZeroFill | 8, "0000beef"},
                    NumberRow{0xBEEF, kUpperCase, "48879"}, NumberRow{-255, kHexadecimal | 6, "   -ff"},
                    NumberRow{0, kHexadecimal | kZeroFill | 2, "00"},
                    NumberRow{7, static_cast<int>(0xFFF80000U), "7"},
                    NumberRow{std::numeric_limits<std::int64_t>::max(), 0, "9223372036854775807"},
                    NumberRow{std::numeric_limits<std::int64_t>::min(), 0, "-9223372036854775808"},
                    NumberRow{std::numeric_limits<std::int64_t>::min(), kHexadecimal, "-8000000000000000"}));

TEST(BufBaseTest, TheLargestNumberHasAllItsDigits) {
    BufBase buffer;
    buffer.putUInt64(buffer.begin(), UINT64_MAX, 0);
    EXPECT_STREQ("18446744073709551615", buffer.text());
    buffer.putULong(buffer.begin(), UINT64_MAX, kHexadecimal | kUpperCase);
    EXPECT_STREQ("FFFFFFFFFFFFFFFF", buffer.text());
}

TEST(BufBaseTest, OfANumberThatDoesNotFitTheLeadingCharactersAreKept) {
    BufBase buffer;
    char* const almostFull = buffer.put(buffer.begin(), std::string(508, 'x').c_str());
    EXPECT_EQ(almostFull + 3, buffer.putUInt64(almostFull, 123456, 0));
    EXPECT_EQ(std::string(508, 'x') + "123", buffer.text());
    EXPECT_EQ(almostFull + 3, buffer.putInt64(almostFull, -123456, 0));
    EXPECT_EQ(std::string(508, 'x') + "-12", buffer.text());
    EXPECT_EQ(almostFull + 3, buffer.putInt64(almostFull, -1, kZeroFill | 65535));
    EXPECT_EQ(std::string(508, 'x') + "-00", buffer.text());
    EXPECT_EQ(almostFull + 3, buffer.putInt64(almostFull, -1, 65535));
    EXPECT_EQ(std::string(508, 'x') + "   ", buffer.text());
}

/// What printf makes of a number, its sign put before the magnitude in hexadecimal too.
std::string printed(bool isNegative, std::uint64_t magnitude, int flags) {
    const bool isHexadecimal = (flags & kHexadecimal) != 0;
    const char* const conversion = !isHexadecimal ? "%lu" : (flags & kUpperCase) != 0 ? "%lX" : "%lx";
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), conversion, static_cast<unsigned long>(magnitude));
    std::string text = digits.data();
    const std::size_t width = static_cast<std::size_t>(flags & 0xFFFF);
    const std::string sign = isNegative ? "-" : "";
    const std::size_t length = text.size() + sign.size();
    const std::size_t fill = width > length ? width - length : 0;
    return (flags & kZeroFill) != 0 ? sign + std::string(fill, '0') + text
                                    : std::string(fill, ' ') + sign + text;
}

TEST(BufBaseTest, ExpectationsForSignedDecimalsAreThoseOfPrintf) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%9d|%09d|%9d|%03d", -77, -77, 77, -1234);
    EXPECT_EQ(std::string(text.data()), printed(true, 77, 9) + "|" + printed(true, 77, kZeroFill | 9) + "|" +
                                            printed(false, 77, 9) + "|" + printed(true, 1234, kZeroFill | 3));
}

TEST(BufBaseTest, NumbersOfAnyValueWidthAndPlaceAreThoseOfPrintfCutAt511) {
    struct {
        BufBase buffer;
        std::array<char, 64> guard{};
    } memory;
    std::mt19937_64 random(1);
    for (int round = 0; round < 50000; ++round) {
        const std::uint64_t value = random() >> (random() % 64);
        const int width = static_cast<int>(random() % (round % 10 == 0 ? 65536 : 40));
        const int flags = width | static_cast<int>(random() % 8 * 0x10000);
        const bool isNegative = random() % 2 == 0 && value != 0 && value <= 1ULL << 63;
        const std::string before(random() % (round % 3 == 0 ? 512 : 20), '.');
        BufBase& buffer = memory.buffer;
        char* const at = buffer.put(buffer.begin(), before.c_str());
        const char* const end = isNegative ? buffer.putInt64(at, static_cast<std::int64_t>(0 - value), flags)
                                           : buffer.putUInt64(at, value, flags);
        const std::string expected = (before + printed(isNegative, value, flags)).substr(0, 511);
        ASSERT_EQ(expected, buffer.text()) << value << " flags " << std::hex << flags;
        ASSERT_EQ(buffer.begin() + expected.size(), end);
        ASSERT_EQ((std::array<char, 64>{}), memory.guard);
    }
}

TEST(BufBaseTest, AFormatIsCopiedUpToItsPlaceholder) {
    BufBase buffer;
    const char* const format = "read %? of %?";
    const auto first = buffer.process(buffer.begin(), format);
    EXPECT_STREQ("read ", buffer.text());
    EXPECT_EQ(buffer.begin() + 5, first.at);
    EXPECT_EQ(format + 7, first.format);
    const auto second = buffer.process(first.at, first.format);
    EXPECT_STREQ("read  of ", buffer.text());
    ASSERT_EQ(format + 13, second.format) << "behind the placeholder, also at the format's end";
    const auto third = buffer.process(second.at, second.format);
    EXPECT_EQ(nullptr, third.format);
    EXPECT_EQ(second.at, third.at);
}

struct FormatRow {
    const char* format;
    const char* copied;
    int rest;  ///< where the format goes on; -1 at its end
};

class BufBaseFormatTest : public testing::TestWithParam<FormatRow> {};

TEST_P(BufBaseFormatTest, IsCopiedWithItsPercentSigns) {
    const auto [format, copied, rest] = GetParam();
    BufBase buffer;
    const auto result = buffer.process(buffer.begin(), format);
    EXPECT_STREQ(copied, buffer.text());
    EXPECT_EQ('\0', *result.at);
    EXPECT_EQ(rest < 0 ? nullptr : format + rest, result.format);
}

INSTANTIATE_TEST_SUITE_P(Table, BufBaseFormatTest,
                         testing::Values(FormatRow{"", "", -1}, FormatRow{"plain", "plain", -1},
                                         FormatRow{"%?", "", 2}, FormatRow{"100 %%", "100 %", -1},
                                         FormatRow{"%%?", "%?", -1}, FormatRow{"%%%?x", "%", 4},
                                         FormatRow{"%%%%", "%%", -1}, FormatRow{"%", "%", -1},
                                         FormatRow{"%d?", "%d?", -1}, FormatRow{"a%", "a%", -1},
                                         FormatRow{"??%", "??%", -1}));

TEST(BufBaseTest, CopyingAFormatStopsWhereTheBufferEnds) {
    BufBase buffer;
    const std::string format = std::string(600, 'x') + "%?";
    const auto result = buffer.process(buffer.begin(), format.c_str());
    EXPECT_EQ(nullptr, result.format);
    EXPECT_EQ(buffer.begin() + 511, result.at);
    EXPECT_EQ(std::string(511, 'x'), buffer.text());
}

}  // namespace
