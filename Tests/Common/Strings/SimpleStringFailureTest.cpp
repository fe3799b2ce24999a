#include "Vl/Common/Strings/SimpleString.h"

#include <gmock/gmock.h>

#include <climits>
#include <cstdarg>
#include <string>

#include "Tests/Common/Strings/HeapFaults.h"
#include "Tests/Common/Strings/StringFields.h"

namespace {

using Valen::SimpleString;

[[gnu::format(printf, 1, 2)]] SimpleString formatted(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    SimpleString string = SimpleString::FormatWith_va_list(format, arguments);
    va_end(arguments);
    return string;
}

/// A wide character that no locale can express: printf refuses it.
constexpr wchar_t kNoCharacter[] = {static_cast<wchar_t>(0x7FFFFFFF), L'\0'};

TEST(SimpleStringFailureTest, TextThatCannotBeFormattedIsOutOfMemory) {
    const SimpleString string = SimpleString::FormatWithParams("%ls", kNoCharacter);
    EXPECT_STREQ(string.c_str(), "out of memory");
    EXPECT_EQ(capacityOf(string), -1);
    EXPECT_STREQ(formatted("%ls", kNoCharacter).c_str(), "out of memory");
}

TEST(SimpleStringFailureTest, ReFormatThatFailsFreesTheOldTextAndSaysOutOfMemory) {
    SimpleString string("old");
    WatchedHeap heap;
    EXPECT_STREQ(string.ReFormat("%ls", kNoCharacter), "out of memory");
    EXPECT_FALSE(string.hasMemoryAllocated());
    EXPECT_EQ(heap->frees, 1);
}

TEST(SimpleStringFailureTest, ASizeThatThereIsNoMemoryForIsOutOfMemory) {
    WatchedHeap heap;
    heap->exhausted = true;
    EXPECT_STREQ(SimpleString().c_str(), "out of memory");
    EXPECT_STREQ(SimpleString(INT_MAX).c_str(), "out of memory");
    EXPECT_EQ(capacityOf(SimpleString(10)), -1);
    EXPECT_FALSE(SimpleString::NoCopyBuffer(10).isValid());
}

struct Exhausted {
    const char* what;
    void (*act)(SimpleString& string);
};

class SimpleStringExhaustedTest : public testing::TestWithParam<Exhausted> {};

TEST_P(SimpleStringExhaustedTest, SaysOutOfMemoryAndFreesTheOldText) {
    SimpleString string("old");
    WatchedHeap heap;
    heap->exhausted = true;
    GetParam().act(string);
    EXPECT_STREQ(string.c_str(), "out of memory");
    EXPECT_EQ(capacityOf(string), -1);
    EXPECT_FALSE(string.hasMemoryAllocated());
    EXPECT_EQ(heap->frees, 1);
}

INSTANTIATE_TEST_SUITE_P(
    EveryWayToGrow, SimpleStringExhaustedTest,
    testing::Values(Exhausted{"Copy", [](SimpleString& s) { s = SimpleString("text"); }},
                    Exhausted{"CopyFlag", [](SimpleString& s) { s = SimpleString("text", true); }},
                    Exhausted{"Assign", [](SimpleString& s) { s = "longer"; }},
                    Exhausted{"Add", [](SimpleString& s) { s += "more"; }},
                    Exhausted{"Append", [](SimpleString& s) { s.append("more"); }},
                    Exhausted{"ReFormat", [](SimpleString& s) { s.ReFormat("%d", 1); }},
                    Exhausted{"Format", [](SimpleString& s) { s = SimpleString::FormatWithParams("%d", 1); }},
                    Exhausted{"Concat",
                              [](SimpleString& s) { s = SimpleString::concatStrings("a", "b", nullptr); }},
                    Exhausted{"ConcatWithDelim",
                              [](SimpleString& s) {
                                  s = SimpleString::concatStringsWithDelim(true, ',', "a", "b", nullptr);
                              }}),
    [](const testing::TestParamInfo<Exhausted>& row) { return std::string(row.param.what); });

TEST(SimpleStringFailureTest, OutOfMemoryStaysWhenItIsCutOrCleared) {
    SimpleString string(-1);
    string.erase(3);
    string.clear();
    EXPECT_STREQ(string.c_str(), "out of memory");
    EXPECT_STREQ(SimpleString(-1).c_str(), "out of memory");
}

TEST(SimpleStringFailureTest, AFailedStringCanBeAssignedAgain) {
    SimpleString string(-1);
    string = "memory again";
    EXPECT_STREQ(string.c_str(), "memory again");
    EXPECT_TRUE(string.hasMemoryAllocated());
}

}  // namespace
