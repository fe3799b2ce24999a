#include "Vl/Common/Strings/Format.h"

#include <gmock/gmock.h>

#include <type_traits>
#include <utility>

#include "Tests/Common/Strings/HeapFaults.h"
#include "Tests/Common/Strings/StringFields.h"

namespace {

using Valen::Format;

static_assert(std::is_same_v<::Format, Valen::Format>, "known with and without namespace");

TEST(FormatTest, HasTheFieldsOfAString) {
    EXPECT_EQ(sizeof(Format), sizeof(StringFields));
    const Format text("%s.%02d", "core", 7);
    EXPECT_STREQ(fieldsOf(text).str, "core.07");
    EXPECT_EQ(fieldsOf(text).capacity, 7);
}

TEST(FormatTest, FreesItsStartTextAndItsResult) {
    WatchedHeap heap;
    { const Format text("%d", 12); }
    EXPECT_EQ(heap->allocations, 1) << "the result comes from printf";
    EXPECT_EQ(heap->frees, 2);
}

TEST(FormatTest, TextThatCannotBeFormattedIsOutOfMemory) {
    constexpr wchar_t noCharacter[] = {static_cast<wchar_t>(0x7FFFFFFF), L'\0'};
    const Format text("%ls", noCharacter);
    EXPECT_STREQ(text.c_str(), "out of memory");
    EXPECT_EQ(capacityOf(text), -1);
}

TEST(FormatTest, WithoutMemoryItIsOutOfMemory) {
    WatchedHeap heap;
    heap->exhausted = true;
    const Format text("%d", 12);
    EXPECT_STREQ(text.c_str(), "out of memory");
    EXPECT_FALSE(text.hasMemoryAllocated());
    EXPECT_EQ(heap->frees, 0);
}

TEST(FormatTest, AStringTakesItOverWithoutACopy) {
    Format text("%d", 12345);
    const char* characters = text.c_str();
    WatchedHeap heap;
    const Valen::SimpleString string(std::move(text));
    EXPECT_EQ(string.c_str(), characters);
    EXPECT_EQ(heap->allocations, 0);
}

}  // namespace
