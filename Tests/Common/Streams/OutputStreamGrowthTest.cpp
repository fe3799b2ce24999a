#include "Vl/Common/Streams/OutputStream.h"

#include <gmock/gmock.h>

#include <new>
#include <string>
#include <string_view>

namespace {

using namespace std::string_view_literals;
using Valen::OutputStream;

TEST(OutputStreamTest, TheDefaultCapacityIs15000Bytes) {
    EXPECT_EQ(15000, OutputStream().GetAllocatedBytes());
    EXPECT_EQ(0, OutputStream().GetSize());
}

TEST(OutputStreamTest, TheByteThatDoesNotFitDoublesTheCapacityOnce) {
    OutputStream stream;
    for (int i = 0; i < 15000; ++i) {
        stream.put('x');
    }
    EXPECT_EQ(15000, stream.GetAllocatedBytes());
    stream.put('y');
    EXPECT_EQ(30000, stream.GetAllocatedBytes());
    EXPECT_EQ(std::string(15000, 'x') + 'y', stream.str());
}

TEST(OutputStreamTest, OneWriteDoublesAsOftenAsItMust) {
    OutputStream stream(10);
    stream << std::string(81, 'x');
    EXPECT_EQ(160, stream.GetAllocatedBytes());
    EXPECT_EQ(std::string(81, 'x'), stream.str());
}

TEST(OutputStreamTest, RoomForTheTerminatorOfATextIsMadeThoughItIsNotWrittenOnPurpose) {
    OutputStream stream(3);
    stream << "abc";
    EXPECT_EQ(6, stream.GetAllocatedBytes());
    EXPECT_EQ("abc", stream.str());
}

struct Put {
    int room;
    void (*put)(OutputStream&);
};

class OutputStreamGrowthTest : public testing::TestWithParam<Put> {};

TEST_P(OutputStreamGrowthTest, APutThatJustFitsDoesNotGrowTheBufferAndOneByteLessDoes) {
    OutputStream fits(GetParam().room);
    GetParam().put(fits);
    EXPECT_EQ(GetParam().room, fits.GetAllocatedBytes());

    OutputStream grows(8 + GetParam().room - 1);
    grows << std::string(8, 'x');
    GetParam().put(grows);
    EXPECT_EQ(2 * (8 + GetParam().room - 1), grows.GetAllocatedBytes());
    EXPECT_EQ("xxxxxxxx" + fits.str(), grows.str());
}

INSTANTIATE_TEST_SUITE_P(Table, OutputStreamGrowthTest,
                         testing::Values(Put{1, [](OutputStream& s) { s.put('a'); }},
                                         Put{1, [](OutputStream& s) { s << 'a'; }},
                                         Put{1, [](OutputStream& s) { s.putUInt8(1); }},
                                         Put{1, [](OutputStream& s) { s.putBool(true); }},
                                         Put{2, [](OutputStream& s) { s.putUInt16(0x0102); }},
                                         Put{4, [](OutputStream& s) { s.putUInt32(0x01020304); }},
                                         Put{8, [](OutputStream& s) { s.putUInt64(0x0102030405060708); }},
                                         Put{4, [](OutputStream& s) { s.putString("abc"); }},
                                         Put{3, [](OutputStream& s) { s.write("abc", 3); }},
                                         Put{3, [](OutputStream& s) { s << std::string("abc"); }},
                                         // Room for the terminator, which is not written.
                                         Put{4, [](OutputStream& s) { s << "abc"; }}));

TEST(OutputStreamTest, DoublingKeepsContentsAndOffsetAndFillsWithZeros) {
    OutputStream stream(4);
    stream << std::string("abcd");
    stream.SetOffset(2);
    stream.DoubleBuffer();
    EXPECT_EQ(8, stream.GetAllocatedBytes());
    EXPECT_EQ(2u, stream.GetOffset());
    // The byte behind the capacity is the spare one.
    EXPECT_EQ("abcd\0\0\0\0\0"sv, std::string_view(stream.GetRawData(), 9));
}

TEST(OutputStreamTest, ACapacityOfNothingGrowsToo) {
    for (const int capacity : {0, -1, -2147483647 - 1}) {
        OutputStream stream(capacity);
        EXPECT_EQ(0, stream.GetAllocatedBytes());
        stream.putUInt16(0x4142);
        EXPECT_EQ("AB", stream.str());
        EXPECT_EQ(2, stream.GetAllocatedBytes());
    }
    OutputStream stream(0);
    stream.DoubleBuffer();
    EXPECT_EQ(1, stream.GetAllocatedBytes());
}

TEST(OutputStreamTest, RoomThatCannotBeThrowsAndLeavesTheStreamAsItWas) {
    OutputStream stream(100);
    stream << "kept";
    EXPECT_THROW(stream.ensureBufferSpace(4294967295U), std::bad_alloc);
    EXPECT_THROW(stream.ensureBufferSpace(2147483647U), std::bad_alloc);
    EXPECT_THROW(stream.SetOffset(4294967295U), std::bad_alloc);
    EXPECT_THROW(stream.seekp(0x7FFFFFFFFFFFFFFF), std::bad_alloc);
    EXPECT_THROW(stream.Reset(4294967295U), std::bad_alloc);
    EXPECT_EQ("kept", stream.str());
    EXPECT_EQ(100, stream.GetAllocatedBytes());
}

}  // namespace
