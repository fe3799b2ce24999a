#include "Vl/Common/Strings/Compare.h"

#include <gmock/gmock.h>

namespace {

TEST(CompareTest, IsEqualComparesWholeTexts) {
    EXPECT_TRUE(Valen::IsEqual("sync", "sync"));
    EXPECT_TRUE(Valen::IsEqual("", ""));
    EXPECT_FALSE(Valen::IsEqual("sync", "Sync"));
    EXPECT_FALSE(Valen::IsEqual("sync", "sync0"));
}

TEST(CompareTest, IsEqualComparesSoManyCharacters) {
    EXPECT_TRUE(Valen::IsEqual("sync0", "sync1", 4));
    EXPECT_FALSE(Valen::IsEqual("sync0", "sync1", 5));
    EXPECT_TRUE(Valen::IsEqual("a", "b", 0));
    EXPECT_TRUE(Valen::IsEqual("sync", "sync", 100)) << "the comparison ends with the text";
    EXPECT_FALSE(Valen::IsEqual("sync", "sync0", 100));
}

TEST(CompareTest, ContainsFindsTheNeedleAnywhere) {
    EXPECT_TRUE(Valen::Contains("bus_breakout", "bus"));
    EXPECT_TRUE(Valen::Contains("bus_breakout", "break"));
    EXPECT_TRUE(Valen::Contains("bus_breakout", "out"));
    EXPECT_TRUE(Valen::Contains("bus_breakout", ""));
    EXPECT_FALSE(Valen::Contains("bus_breakout", "busb"));
    EXPECT_FALSE(Valen::Contains("", "a"));
}

TEST(CompareTest, ContainsLooksBehindZerosOfAStdString) {
    const std::string text("a\0bc", 4);
    EXPECT_TRUE(Valen::Contains(text, std::string("bc")));
    EXPECT_FALSE(Valen::Contains(text, std::string("cb")));
    EXPECT_TRUE(Valen::Contains(text, std::string()));
}

TEST(CompareTest, BeginsWithComparesThePrefix) {
    EXPECT_TRUE(Valen::BeginsWith("eth0", "eth"));
    EXPECT_TRUE(Valen::BeginsWith("eth0", "eth0"));
    EXPECT_FALSE(Valen::BeginsWith("eth0", "eth01"));
    EXPECT_FALSE(Valen::BeginsWith("eth0", "th"));
}

TEST(CompareTest, EveryTextBeginsWithTheEmptyOne) {
    EXPECT_TRUE(Valen::BeginsWith("x", ""));
    EXPECT_TRUE(Valen::BeginsWith("", ""));
}

TEST(CompareTest, EndsWithComparesTheTail) {
    EXPECT_TRUE(Valen::EndsWith("icon.png", ".png"));
    EXPECT_TRUE(Valen::EndsWith("icon.png", "icon.png"));
    EXPECT_TRUE(Valen::EndsWith("icon.png", ""));
    EXPECT_FALSE(Valen::EndsWith("icon.png", ".pn"));
}

TEST(CompareTest, NothingEndsWithALongerText) {
    EXPECT_FALSE(Valen::EndsWith("ab", "abc"));
    EXPECT_FALSE(Valen::EndsWith("bc", "abc"));
    EXPECT_FALSE(Valen::EndsWith("", "a"));
}

}  // namespace
