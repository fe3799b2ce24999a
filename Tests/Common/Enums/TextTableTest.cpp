#include "Vl/Common/Enums/TextTable.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Enums::TextRow;
using Enums::TextTable;

constexpr auto kSome = std::to_array<TextRow>({
    {0, "zero"},
    {2, ""},
    {3, Enums::kNoText},
    {63, "last bit"},
    {64, "next word"},
    {5000, "far"},
    {5001, Enums::kNoText},
});
using Some = TextTable<kSome>;

/// Texts that only their middles tell apart, so that they share one place in the hash table.
constexpr auto kAlike = std::to_array<TextRow>({
    {0, "beginning-0-the-end"},
    {1, "beginning-1-the-end"},
    {2, "beginning-2-the-end"},
    {3, "beginning-3-the-end"},
});
using Alike = TextTable<kAlike>;

constexpr auto kOne = std::to_array<TextRow>({{7, "only"}});
using One = TextTable<kOne>;

static_assert(std::string_view(Some::textOf(63)) == "last bit");
static_assert(std::string_view(Some::textOf(1)) == "unknown");
static_assert(Alike::valueOf("beginning-2-the-end") == 2);
static_assert(Some::contains(3) && !Some::contains(4));

TEST(TextTableTest, TextsAreFoundNearAndFar) {
    EXPECT_STREQ("zero", Some::textOf(0));
    EXPECT_STREQ("next word", Some::textOf(64));
    EXPECT_STREQ("far", Some::textOf(5000));
}

TEST(TextTableTest, GapsAndNumbersOutsideReadUnknown) {
    for (const int number : {-2147483647, -1, 1, 62, 65, 4999, 5002, 2147483647}) {
        EXPECT_STREQ("unknown", Some::textOf(number)) << number;
    }
}

TEST(TextTableTest, ARowWithoutATextIsDefinedAndReadsUnknown) {
    for (const int number : {3, 5001}) {
        EXPECT_TRUE(Some::contains(number)) << number;
        EXPECT_STREQ("unknown", Some::textOf(number)) << number;
    }
    EXPECT_EQ(-1, Some::valueOf("unknown"));
}

TEST(TextTableTest, AnEmptyTextIsATextToo) {
    EXPECT_STREQ("", Some::textOf(2));
    EXPECT_EQ(2, Some::valueOf(""));
    EXPECT_EQ(-1, One::valueOf(""));
}

TEST(TextTableTest, OnlyRowsAreContained) {
    for (const long number : {0L, 2L, 3L, 63L, 64L, 5000L, 5001L}) {
        EXPECT_TRUE(Some::contains(number)) << number;
    }
    for (const long number : {-1L, 1L, 4L, 62L, 65L, 127L, 128L, 4999L, 5002L, 0x100000000L, 0x100001388L}) {
        EXPECT_FALSE(Some::contains(number)) << number;
    }
}

TEST(TextTableTest, SizeIsOnePastTheLastNearValue) {
    EXPECT_EQ(65, Some::size());
    EXPECT_EQ(4, Alike::size());
    EXPECT_EQ(8, One::size());
}

TEST(TextTableTest, TextsWithTheSameEndsAreToldApart) {
    for (const TextRow& row : kAlike) {
        EXPECT_EQ(row.value, Alike::valueOf(row.text));
    }
    EXPECT_EQ(-1, Alike::valueOf("beginning-4-the-end"));
}

TEST(TextTableTest, ATextIsReadNoFurtherThanItsEnd) {
    for (std::size_t length = 0; length < 40; ++length) {
        std::vector<char> exact(length, 'o');  // on the heap, where the address sanitizer watches both ends
        exact.push_back('\0');
        EXPECT_EQ(length == 0 ? 2 : -1, Some::valueOf(exact.data())) << length;
    }
}

TEST(TextTableTest, ATextIsFoundWhereverItLies) {
    const std::string padded = "xxxxxxxxbeginning-1-the-end";
    for (std::size_t shift = 0; shift < 8; ++shift) {
        const std::string moved = padded.substr(shift);
        EXPECT_EQ(1, Alike::valueOf(moved.c_str() + 8 - shift)) << shift;
    }
}

}  // namespace
