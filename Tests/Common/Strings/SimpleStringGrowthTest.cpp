#include "Vl/Common/Strings/SimpleString.h"

#include <gmock/gmock.h>

#include "Tests/Common/Strings/HeapFaults.h"
#include "Tests/Common/Strings/StringFields.h"

namespace {

using Valen::SimpleString;

TEST(SimpleStringTest, ATextThatFitsIsAssignedInPlace) {
    SimpleString string("12345");
    const char* block = string.c_str();
    WatchedHeap heap;
    EXPECT_EQ(string.assign("abcde"), block);
    EXPECT_EQ(string.assign("xy"), block);
    EXPECT_STREQ(string.c_str(), "xy");
    EXPECT_EQ(capacityOf(string), 6);
    EXPECT_EQ(heap->allocations, 0);
}

TEST(SimpleStringTest, ALongerTextGetsABlockOfExactlyItsSize) {
    SimpleString string("12345");
    WatchedHeap heap;
    const char* text = string.assign("123456");
    EXPECT_EQ(text, string.c_str());
    EXPECT_STREQ(string.c_str(), "123456");
    EXPECT_EQ(capacityOf(string), 7);
    EXPECT_EQ(heap->lastSize, 7U);
    EXPECT_EQ(heap->allocations, 1);
    EXPECT_EQ(heap->frees, 1);
}

TEST(SimpleStringTest, AssigningToANonOwnedTextAllocatesAndNeverWritesIntoIt) {
    char text[] = "literal";
    SimpleString string(text, false);
    WatchedHeap heap;
    string = "new";
    EXPECT_STREQ(string.c_str(), "new");
    EXPECT_EQ(capacityOf(string), 4);
    EXPECT_EQ(heap->allocations, 1);
    EXPECT_EQ(heap->frees, 0);
    EXPECT_STREQ(text, "literal");
}

TEST(SimpleStringTest, AddingWithinTheCapacityStaysInPlace) {
    SimpleString string(8);
    string = "front";
    const char* block = string.c_str();
    WatchedHeap heap;
    string += "12";
    EXPECT_STREQ(string.c_str(), "front12");
    EXPECT_EQ(string.c_str(), block);
    EXPECT_EQ(heap->allocations, 0);
}

TEST(SimpleStringTest, AddingBeyondTheCapacityAllocatesExactlyTheSizeNeeded) {
    SimpleString string(8);
    string = "front";
    WatchedHeap heap;
    string += "123";
    EXPECT_STREQ(string.c_str(), "front123");
    EXPECT_EQ(capacityOf(string), 9);
    EXPECT_EQ(heap->lastSize, 9U);
    EXPECT_EQ(heap->frees, 1);
}

TEST(SimpleStringTest, AddingToANonOwnedTextCopiesItAndFreesNothing) {
    char text[] = "panel";
    SimpleString string(text, false);
    WatchedHeap heap;
    string += " 0";
    EXPECT_STREQ(string.c_str(), "panel 0");
    EXPECT_EQ(capacityOf(string), 8);
    EXPECT_EQ(heap->frees, 0);
    EXPECT_STREQ(text, "panel");
}

TEST(SimpleStringTest, AppendAlwaysTakesANewBlockOfFormattedText) {
    SimpleString string(100);
    string = "one ";
    EXPECT_STREQ(string.append("two"), "one two");
    EXPECT_EQ(capacityOf(string), 7);
}

TEST(SimpleStringTest, AppendTakesPercentSignsAsTheyAre) {
    SimpleString string("100%s");
    string.append("%d%n");
    EXPECT_STREQ(string.c_str(), "100%s%d%n");
}

TEST(SimpleStringTest, AdoptedTextGetsANewBlockWithItsNextGrowth) {
    SimpleString string = SimpleString::FormatWithParams("%d", 12345);
    EXPECT_EQ(capacityOf(string), 5);
    WatchedHeap heap;
    string = "12345";
    EXPECT_EQ(heap->allocations, 1);
    EXPECT_EQ(capacityOf(string), 6);
}

// The argument is a part of the string itself

TEST(SimpleStringTest, AssigningItsOwnTextChangesNothing) {
    SimpleString owned("12345");
    owned = owned.c_str();
    EXPECT_STREQ(owned.c_str(), "12345");
    SimpleString adopted = SimpleString::FormatWithParams("%d", 12345);
    adopted = adopted.c_str();
    EXPECT_STREQ(adopted.c_str(), "12345");
    EXPECT_EQ(capacityOf(adopted), 6);
}

TEST(SimpleStringTest, AssigningItsOwnTailKeepsTheTail) {
    SimpleString string("12345");
    EXPECT_STREQ(string.assign(string.c_str() + 2), "345");
}

TEST(SimpleStringTest, AddingItsOwnTextDoublesIt) {
    SimpleString tight("abc");
    tight += tight.c_str();
    EXPECT_STREQ(tight.c_str(), "abcabc");
    SimpleString roomy(20);
    roomy = "abc";
    roomy += roomy.c_str();
    EXPECT_STREQ(roomy.c_str(), "abcabc");
    roomy += roomy.c_str() + 4;
    EXPECT_STREQ(roomy.c_str(), "abcabcbc");
}

TEST(SimpleStringTest, AppendingItsOwnTextDoublesIt) {
    SimpleString string("abc");
    EXPECT_STREQ(string.append(string.c_str()), "abcabc");
}

TEST(SimpleStringTest, FormattingItsOwnTextReadsTheOldOne) {
    SimpleString string("abc");
    EXPECT_STREQ(string.ReFormat("%s!%s", string.c_str(), string.c_str() + 1), "abc!bc");
}

}  // namespace
