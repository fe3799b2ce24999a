#include "Tools/boardsim/Board/Layout.h"

#include <gtest/gtest.h>

namespace {

using boardsim::Core;
using boardsim::encodeLayout;

TEST(LayoutTest, ARecordIsNameCountVersionAndAddressesInBigEndian) {
    const std::vector<Core> cores{{"ab", 0x01020304, {0x11223344, 0xFFEEDDCC}}};
    EXPECT_EQ(std::string("ab\0\x00\x03\x01\x02\x03\x04\x11\x22\x33\x44\xFF\xEE\xDD\xCC", 17),
              encodeLayout(cores));
}

TEST(LayoutTest, ACoreWithoutAddressesHasItsVersionOnly) {
    const std::vector<Core> cores{{"v", 5, {}}};
    EXPECT_EQ(std::string("v\0\x00\x01\x00\x00\x00\x05", 8), encodeLayout(cores));
}

TEST(LayoutTest, RecordsFollowEachOtherWithoutHeaderOrPadding) {
    const std::vector<Core> cores{{"a", 0, {}}, {"b", 0, {}}};
    EXPECT_EQ(16U, encodeLayout(cores).size());
    EXPECT_EQ('b', encodeLayout(cores)[8]);
    EXPECT_EQ("", encodeLayout({}));
}

TEST(LayoutTest, MoreThan255WordsCountInTheUpperByte) {
    const std::vector<Core> cores{{"x", 0, std::vector<std::uint32_t>(0x102 - 1)}};
    EXPECT_EQ(std::string("x\0\x01\x02", 4), encodeLayout(cores).substr(0, 4));
}

}  // namespace
