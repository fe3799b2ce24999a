#include "Vl/Common/Strings/SimpleString.h"

#include <gmock/gmock.h>

#include <climits>
#include <type_traits>
#include <utility>

#include "Tests/Common/Strings/HeapFaults.h"
#include "Tests/Common/Strings/StringFields.h"

namespace {

using Valen::SimpleString;

static_assert(std::is_same_v<::SimpleString, Valen::SimpleString>, "known with and without namespace");
static_assert(!std::is_copy_constructible_v<SimpleString>);
static_assert(std::is_nothrow_move_constructible_v<SimpleString>);
static_assert(std::is_nothrow_move_assignable_v<SimpleString>);

void expectMovedFrom(const SimpleString& string) {
    EXPECT_EQ(fieldsOf(string).str, nullptr);
    EXPECT_EQ(capacityOf(string), -1);
}

TEST(SimpleStringTest, TheFieldsAreThePointerAndThenTheCapacity) {
    const SimpleString string("panel");
    EXPECT_STREQ(fieldsOf(string).str, "panel");
    EXPECT_EQ(fieldsOf(string).str, string.c_str());
    EXPECT_EQ(fieldsOf(string).capacity, 6);
}

TEST(SimpleStringTest, DefaultIsAnOwnedEmptyTextOfOneByte) {
    WatchedHeap heap;
    const SimpleString string;
    EXPECT_STREQ(string.c_str(), "");
    EXPECT_EQ(capacityOf(string), 1);
    EXPECT_EQ(heap->lastSize, 1U);
}

TEST(SimpleStringTest, SizeIsTheRoomForTextAndTerminator) {
    WatchedHeap heap;
    SimpleString string(6);
    EXPECT_STREQ(string.c_str(), "");
    EXPECT_EQ(capacityOf(string), 6);
    const char* block = string.c_str();
    EXPECT_EQ(string.assign("12345"), block);
    EXPECT_EQ(heap->allocations, 1);
}

TEST(SimpleStringTest, SizeZeroIsAnOwnedEmptyText) {
    SimpleString string(0);
    EXPECT_STREQ(string.c_str(), "");
    EXPECT_EQ(capacityOf(string), 0);
    EXPECT_TRUE(string.hasMemoryAllocated());
    string = "";
    EXPECT_EQ(capacityOf(string), 1);
}

TEST(SimpleStringTest, NegativeSizesAreOutOfMemory) {
    for (const int size : {-1, -2, INT_MIN}) {
        const SimpleString string(size);
        EXPECT_STREQ(string.c_str(), "out of memory") << size;
        EXPECT_EQ(capacityOf(string), -1) << size;
    }
}

TEST(SimpleStringTest, CopyingATextTakesItsLengthAndTheTerminator) {
    WatchedHeap heap;
    const char text[] = "front";
    const SimpleString string(text);
    EXPECT_STREQ(string.c_str(), "front");
    EXPECT_NE(string.c_str(), text);
    EXPECT_EQ(capacityOf(string), 6);
    EXPECT_EQ(heap->lastSize, 6U);
}

TEST(SimpleStringTest, WithoutCopyItPointsAtTheText) {
    WatchedHeap heap;
    const char text[] = "constant";
    const SimpleString string(text, false);
    EXPECT_EQ(string.c_str(), text);
    EXPECT_EQ(capacityOf(string), -1);
    EXPECT_FALSE(string.hasMemoryAllocated());
    EXPECT_EQ(heap->allocations, 0);
}

TEST(SimpleStringTest, WithCopyItOwnsItsText) {
    const char text[] = "copied";
    const SimpleString string(text, true);
    EXPECT_STREQ(string.c_str(), "copied");
    EXPECT_NE(string.c_str(), text);
    EXPECT_EQ(capacityOf(string), 7);
    EXPECT_TRUE(string.hasMemoryAllocated());
}

TEST(SimpleStringTest, ANullTextIsEmpty) {
    const char* none = nullptr;
    EXPECT_STREQ(SimpleString(none).c_str(), "");
    EXPECT_STREQ(SimpleString(none, true).c_str(), "");
    EXPECT_STREQ(SimpleString(none, false).c_str(), "");
    SimpleString string("text");
    string += none;
    string.append(none);
    EXPECT_STREQ(string.c_str(), "text");
    EXPECT_STREQ(string.assign(none), "");
}

TEST(SimpleStringTest, DestroyingANonOwnedTextFreesNothing) {
    WatchedHeap heap;
    { const SimpleString string("literal", false); }
    EXPECT_EQ(heap->frees, 0);
}

TEST(SimpleStringTest, DestroyingAnOwnedTextFreesItOnce) {
    WatchedHeap heap;
    { const SimpleString string("owned"); }
    EXPECT_EQ(heap->allocations, 1);
    EXPECT_EQ(heap->frees, 1);
}

TEST(SimpleStringTest, MovingTakesPointerAndCapacity) {
    SimpleString source("moved");
    const char* text = source.c_str();
    const SimpleString target(std::move(source));
    EXPECT_EQ(target.c_str(), text);
    EXPECT_EQ(capacityOf(target), 6);
    expectMovedFrom(source);  // NOLINT: the moved-from state is what is tested
}

TEST(SimpleStringTest, MovingANonOwnedTextStillPointsAtIt) {
    const char text[] = "constant";
    SimpleString source(text, false);
    const SimpleString target(std::move(source));
    EXPECT_EQ(target.c_str(), text);
    EXPECT_EQ(capacityOf(target), -1);
    expectMovedFrom(source);  // NOLINT: the moved-from state is what is tested
}

TEST(SimpleStringTest, MoveAssignmentFreesTheOldTextAndTakesTheOther) {
    SimpleString source("new text");
    SimpleString target("old");
    const char* text = source.c_str();
    WatchedHeap heap;
    target = std::move(source);
    EXPECT_EQ(heap->frees, 1);
    EXPECT_EQ(heap->allocations, 0);
    EXPECT_EQ(target.c_str(), text);
    EXPECT_EQ(capacityOf(target), 9);
    expectMovedFrom(source);  // NOLINT: the moved-from state is what is tested
}

TEST(SimpleStringTest, MoveAssignmentToItselfChangesNothing) {
    SimpleString string("same");
    SimpleString& itself = string;
    string = std::move(itself);
    EXPECT_STREQ(string.c_str(), "same");
    EXPECT_EQ(capacityOf(string), 5);
}

TEST(SimpleStringTest, QueriesOnAMovedFromStringAnswerAsForAnEmptyText) {
    SimpleString moved("text");
    const SimpleString target(std::move(moved));
    EXPECT_EQ(moved.c_str(), nullptr);  // NOLINT: the moved-from state is what is tested
    EXPECT_EQ(moved.length(), 0U);
    EXPECT_TRUE(moved.empty());
    EXPECT_EQ(moved[0], '\0');
    EXPECT_EQ(moved.find('t'), -1);
    EXPECT_EQ(moved.rfind('t'), -1);
    EXPECT_EQ(moved.find("t"), -1);
    EXPECT_FALSE(moved.endsWith("t"));
    EXPECT_TRUE(moved.endsWith(""));
    EXPECT_TRUE(moved == "");
    EXPECT_TRUE(moved < target);
    EXPECT_TRUE(target > moved.c_str());
    EXPECT_FALSE(moved.hasMemoryAllocated());
}

TEST(SimpleStringTest, AMovedFromStringCanBeChangedAgain) {
    const auto movedFrom = [] {
        SimpleString source("text");
        const SimpleString target(std::move(source));
        return source;  // NOLINT: the moved-from state is what is wanted
    };
    SimpleString assigned = movedFrom();
    assigned = "again";
    EXPECT_STREQ(assigned.c_str(), "again");
    SimpleString added = movedFrom();
    added += "more";
    EXPECT_STREQ(added.c_str(), "more");
    SimpleString appended = movedFrom();
    appended.append("end");
    EXPECT_STREQ(appended.c_str(), "end");
    SimpleString cleared = movedFrom();
    cleared.clear();
    EXPECT_EQ(cleared.freeme(), -1);
    expectMovedFrom(cleared);
}

TEST(SimpleStringTest, FreemeFreesTheOwnedTextOnce) {
    SimpleString string("text");
    WatchedHeap heap;
    EXPECT_EQ(string.freeme(), -1);
    EXPECT_EQ(capacityOf(string), -1);
    EXPECT_EQ(heap->frees, 1);
    EXPECT_EQ(string.freeme(), -1);
    EXPECT_EQ(heap->frees, 1);
    EXPECT_TRUE(string.empty());
}

TEST(SimpleStringTest, FreemeLeavesANonOwnedTextAlone) {
    WatchedHeap heap;
    SimpleString string("literal", false);
    EXPECT_EQ(string.freeme(), -1);
    EXPECT_EQ(heap->frees, 0);
    EXPECT_STREQ(string.c_str(), "literal");
}

}  // namespace
