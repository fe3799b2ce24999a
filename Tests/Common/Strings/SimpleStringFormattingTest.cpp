#include "Vl/Common/Strings/SimpleString.h"

#include <gmock/gmock.h>

#include <cstdarg>
#include <string>

#include "Tests/Common/Strings/HeapFaults.h"
#include "Tests/Common/Strings/StringFields.h"

namespace {

using Valen::SimpleString;

TEST(SimpleStringTest, ReFormatReplacesTheTextAndFreesTheOldBlock) {
    SimpleString string("old text");
    WatchedHeap heap;
    const char* text = string.ReFormat("%s=%d", "line", 2);
    EXPECT_EQ(text, string.c_str());
    EXPECT_STREQ(string.c_str(), "line=2");
    EXPECT_EQ(capacityOf(string), 6);
    EXPECT_EQ(heap->frees, 1);
}

[[gnu::format(printf, 2, 3)]] void reformat(SimpleString& string, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    string.ReFormat(format, arguments);
    va_end(arguments);
}

TEST(SimpleStringTest, ReFormatTakesAnArgumentList) {
    SimpleString string("literal", false);
    reformat(string, "%s %d %.1f", "bus", 3, 1.5);
    EXPECT_STREQ(string.c_str(), "bus 3 1.5");
    EXPECT_EQ(capacityOf(string), 9);
}

TEST(SimpleStringTest, AZeroToFormatIsANumberAndNotAnArgumentList) {
    SimpleString string;
    EXPECT_STREQ(string.ReFormat("%d!", 0), "0!");
}

TEST(SimpleStringTest, TheCapacityOfFormattedTextIsWhatPrintfReturns) {
    SimpleString string;
    string.ReFormat("ab%ccd", '\0');
    EXPECT_EQ(capacityOf(string), 5);
    EXPECT_EQ(string.length(), 2U);
    EXPECT_EQ(capacityOf(SimpleString::FormatWithParams("ab%ccd", '\0')), 5);
}

[[gnu::format(printf, 1, 2)]] SimpleString formatted(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    SimpleString string = SimpleString::FormatWith_va_list(format, arguments);
    va_end(arguments);
    return string;
}

TEST(SimpleStringTest, FormattedTextIsAdoptedWithItsLengthAsCapacity) {
    const SimpleString params = SimpleString::FormatWithParams("%s-%03d", "i2c", 7);
    EXPECT_STREQ(params.c_str(), "i2c-007");
    EXPECT_EQ(capacityOf(params), 7);
    const SimpleString list = formatted("%s-%03d", "i2c", 7);
    EXPECT_STREQ(list.c_str(), "i2c-007");
    EXPECT_EQ(capacityOf(list), 7);
}

TEST(SimpleStringTest, FormattedTextMayBeEmpty) {
    const SimpleString string = SimpleString::FormatWithParams("%s", "");
    EXPECT_STREQ(string.c_str(), "");
    EXPECT_EQ(capacityOf(string), 0);
    EXPECT_TRUE(string.hasMemoryAllocated());
}

TEST(SimpleStringTest, FormattedTextMayBeLong) {
    const std::string text(100'000, 'x');
    EXPECT_EQ(SimpleString::FormatWithParams("%s", text.c_str()).c_str(), text);
}

TEST(SimpleStringTest, ConcatStringsJoinsInOneAllocation) {
    WatchedHeap heap;
    const SimpleString joined = SimpleString::concatStrings("/dev/", "i2c", "-", "1", nullptr);
    EXPECT_STREQ(joined.c_str(), "/dev/i2c-1");
    EXPECT_EQ(capacityOf(joined), 10);
    EXPECT_EQ(heap->allocations, 1);
    EXPECT_EQ(heap->lastSize, 11U);
}

TEST(SimpleStringTest, ConcatStringsOfOneOrNoTexts) {
    EXPECT_STREQ(SimpleString::concatStrings("one", nullptr).c_str(), "one");
    const char* none = nullptr;
    const SimpleString joined = SimpleString::concatStrings(none, nullptr);
    EXPECT_STREQ(joined.c_str(), "");
    EXPECT_EQ(capacityOf(joined), 0);
}

TEST(SimpleStringTest, ConcatStringsWithDelimStandsBetweenTheTexts) {
    WatchedHeap heap;
    const SimpleString joined = SimpleString::concatStringsWithDelim(false, ',', "a", "b", "c", nullptr);
    EXPECT_STREQ(joined.c_str(), "a,b,c");
    EXPECT_EQ(capacityOf(joined), 5);
    EXPECT_EQ(heap->allocations, 1);
}

TEST(SimpleStringTest, ConcatStringsWithTrailingDelimEndsWithIt) {
    const SimpleString joined = SimpleString::concatStringsWithDelim(true, ',', "a", "b", "c", nullptr);
    EXPECT_STREQ(joined.c_str(), "a,b,c,");
    EXPECT_EQ(capacityOf(joined), 6);
}

TEST(SimpleStringTest, ConcatStringsWithDelimKeepsEmptyTexts) {
    EXPECT_STREQ(SimpleString::concatStringsWithDelim(false, '/', "", "a", "", nullptr).c_str(), "/a/");
    EXPECT_STREQ(SimpleString::concatStringsWithDelim(false, '/', "", nullptr).c_str(), "");
    EXPECT_STREQ(SimpleString::concatStringsWithDelim(true, '/', "", nullptr).c_str(), "/");
}

TEST(SimpleStringTest, ConcatStringsWithDelimOfNoTextsIsEmpty) {
    const char* none = nullptr;
    EXPECT_STREQ(SimpleString::concatStringsWithDelim(false, ',', none, nullptr).c_str(), "");
    EXPECT_STREQ(SimpleString::concatStringsWithDelim(true, ',', none, nullptr).c_str(), "");
}

TEST(SimpleStringTest, ConcatStringsWithZeroDelimIsPlainConcatenation) {
    for (const bool trailing : {false, true}) {
        const SimpleString joined = SimpleString::concatStringsWithDelim(trailing, '\0', "ab", "cd", nullptr);
        EXPECT_STREQ(joined.c_str(), "abcd");
        EXPECT_EQ(capacityOf(joined), 4);
    }
}

}  // namespace
