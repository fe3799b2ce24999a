#include "Vl/Common/Strings/SimpleString.h"

#include <gmock/gmock.h>

#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "Tests/Common/Strings/HeapFaults.h"
#include "Tests/Common/Strings/StringFields.h"

namespace {

using Valen::SimpleString;

TEST(NoCopyBufferTest, ItIsOnePointer) {
    EXPECT_EQ(sizeof(SimpleString::NoCopyBuffer), sizeof(char*));
}

TEST(NoCopyBufferTest, HasTheRoomAskedFor) {
    WatchedHeap heap;
    const SimpleString::NoCopyBuffer buffer(12);
    EXPECT_TRUE(buffer.isValid());
    EXPECT_NE(buffer.get(), nullptr);
    EXPECT_EQ(heap->lastSize, 12U);
}

TEST(NoCopyBufferTest, AStringAdoptsItsMemoryWithTheLengthAsCapacity) {
    SimpleString::NoCopyBuffer buffer(12);
    char* memory = buffer.get();
    std::memcpy(memory, "adopted", sizeof("adopted"));
    WatchedHeap heap;
    const SimpleString string(std::move(buffer));
    EXPECT_EQ(string.c_str(), memory);
    EXPECT_EQ(capacityOf(string), 7);
    EXPECT_FALSE(buffer.isValid());  // NOLINT: the moved-from state is what is tested
    EXPECT_EQ(heap->allocations, 0);
}

TEST(NoCopyBufferTest, AnUnwrittenOneIsAdoptedAsAnEmptyText) {
    EXPECT_STREQ(SimpleString(SimpleString::NoCopyBuffer(5)).c_str(), "");
    EXPECT_STREQ(SimpleString(SimpleString::NoCopyBuffer(0)).c_str(), "");
}

TEST(NoCopyBufferTest, AnEmptyOneGivesOutOfMemory) {
    SimpleString::NoCopyBuffer buffer(5);
    std::free(buffer.release());
    EXPECT_FALSE(buffer.isValid());
    EXPECT_EQ(buffer.get(), nullptr);
    const SimpleString string(std::move(buffer));
    EXPECT_STREQ(string.c_str(), "out of memory");
    EXPECT_EQ(capacityOf(string), -1);
}

TEST(NoCopyBufferTest, NegativeSizesAreEmpty) {
    EXPECT_FALSE(SimpleString::NoCopyBuffer(-1).isValid());
    EXPECT_FALSE(SimpleString::NoCopyBuffer(INT_MIN).isValid());
}

TEST(NoCopyBufferTest, FreesWhatNobodyTook) {
    WatchedHeap heap;
    { const SimpleString::NoCopyBuffer buffer(5); }
    EXPECT_EQ(heap->allocations, 1);
    EXPECT_EQ(heap->frees, 1);
}

[[gnu::format(printf, 1, 2)]] SimpleString::NoCopyBuffer bufferOf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    SimpleString::NoCopyBuffer buffer(format, arguments);
    va_end(arguments);
    return buffer;
}

TEST(NoCopyBufferTest, HoldsFormattedText) {
    EXPECT_STREQ(bufferOf("%s %d", "slot", 4).get(), "slot 4");
}

TEST(NoCopyBufferTest, TextThatCannotBeFormattedLeavesItEmpty) {
    constexpr wchar_t noCharacter[] = {static_cast<wchar_t>(0x7FFFFFFF), L'\0'};
    EXPECT_FALSE(bufferOf("%ls", noCharacter).isValid());
}

}  // namespace
