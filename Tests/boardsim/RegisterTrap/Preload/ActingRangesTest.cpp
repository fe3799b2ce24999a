#include "Tools/boardsim/Host/RegisterTrap/Preload/ActingRanges.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using boardsim::ActingRanges;
using boardsim::RegisterRange;

void expectRange(std::uint64_t begin, std::uint64_t end, const RegisterRange& range) {
    EXPECT_EQ(begin, range.begin);
    EXPECT_EQ(end, range.end);
}

TEST(ActingRangesTest, HoldEveryByteFromFirstToLast) {
    ActingRanges ranges;
    ASSERT_TRUE(ranges.parse("800-803,2000-23ff"));
    EXPECT_FALSE(ranges.contain(0x7FF));
    EXPECT_TRUE(ranges.contain(0x800));
    EXPECT_TRUE(ranges.contain(0x803));
    EXPECT_FALSE(ranges.contain(0x804));
    EXPECT_TRUE(ranges.contain(0x23FF));
    EXPECT_FALSE(ranges.contain(0x2400));
}

TEST(ActingRangesTest, TheNextStretchBeginsWhereItIsAskedForAtTheEarliest) {
    ActingRanges ranges;
    ASSERT_TRUE(ranges.parse("2000-23FF,800-803")) << "in any order";
    expectRange(0x800, 0x804, ranges.next(0));
    expectRange(0x802, 0x804, ranges.next(0x802));
    expectRange(0x2000, 0x2400, ranges.next(0x804));
    EXPECT_TRUE(ranges.next(0x2400).isEmpty());
}

TEST(ActingRangesTest, NothingIsNoRange) {
    ActingRanges ranges;
    EXPECT_TRUE(ranges.parse(""));
    EXPECT_FALSE(ranges.contain(0));
    EXPECT_TRUE(ranges.next(0).isEmpty());
}

TEST(ActingRangesTest, AnotherFormIsNoListOfRanges) {
    for (const char* text : {"800", "800-", "-803", "800-803,,900-903", ",", "803-800", "0x800-0x803",
                             "800-80g", "800 - 803", "0-ffffffffffffffff", "0-10000000000000000"}) {
        ActingRanges ranges;
        ASSERT_TRUE(ranges.parse("100-200"));
        EXPECT_FALSE(ranges.parse(text)) << text;
        EXPECT_TRUE(ranges.next(0).isEmpty()) << text;
    }
}

TEST(ActingRangesTest, ThereIsRoomFor32) {
    std::string text = "0-0";
    for (int i = 1; i < 32; ++i) {
        text += ",0-0";
    }
    ActingRanges ranges;
    EXPECT_TRUE(ranges.parse(text));
    EXPECT_FALSE(ranges.parse(text + ",0-0"));
}

}  // namespace
