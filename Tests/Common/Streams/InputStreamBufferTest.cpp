#include "Vl/Common/Streams/InputStream.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <utility>

#include "Tests/Common/Streams/InputBytes.h"
#include "Vl/Common/Streams/OutputStream.h"

namespace {

using Valen::InputStream;

TEST(InputStreamTest, TheCallersBytesAreCopied) {
    std::string bytes = "abc";
    InputStream constructed(bytes.data(), bytes.size());
    InputStream initialised;
    initialised.init(bytes.data(), 3);
    bytes = "xyz";
    EXPECT_EQ('a', constructed.peek());
    EXPECT_EQ('a', initialised.peek());
}

TEST(InputStreamTest, NullBytesAndNegativeSizesAreNoBytes) {
    const char* const nothing = nullptr;
    InputStream stream(nothing, 5);
    EXPECT_EQ(0, stream.getSize());
    EXPECT_EQ(0, stream.getUInt8());
    for (const int size : {5, 0, -1}) {
        stream.init(nothing, size);
        EXPECT_EQ(0, stream.getSize());
        EXPECT_EQ(0, stream.tellg());
    }
    stream.init("abc", -1);
    EXPECT_TRUE(stream.eof());
    EXPECT_EQ(0, InputStream(-5).getBufferSize());
    stream.getBuffer(-5);
    EXPECT_EQ(0, stream.getSize());
    stream.setBufferSize(-5);
    EXPECT_EQ(0, stream.getBufferSize());
}

TEST(InputStreamTest, InitUsesTheBufferThatIsThereWhenItFits) {
    InputStream stream(10);
    long size = -1;
    const char* const buffer = stream.GetData(size);
    EXPECT_EQ(0, size);
    stream.init("abcdefghij", 10);
    stream.getUInt8();
    stream.init("xyz", 3);
    EXPECT_EQ(buffer, stream.GetData(size));
    EXPECT_EQ(3, size);
    EXPECT_EQ('x', stream.peek());
    EXPECT_EQ(10, stream.getBufferSize());
    stream.init("abcdefghijk", 11);
    EXPECT_EQ(11, stream.getBufferSize());
    EXPECT_EQ('a', stream.peek());
}

TEST(InputStreamTest, AnOutputStreamIsCopied) {
    Valen::OutputStream written;
    written << "abc";
    InputStream stream(written);
    written.SetData("xyz", 3);
    EXPECT_EQ(3, stream.getSize());
    EXPECT_EQ('a', stream.peek());
}

TEST(InputStreamTest, TheBytesOfAnOutputStreamAreTakenWithoutACopy) {
    Valen::OutputStream written;
    written << "abc";
    const char* const bytes = written.GetData();
    InputStream stream(std::move(written));
    long size = 0;
    EXPECT_EQ(bytes, stream.GetData(size));
    EXPECT_EQ(3, size);
    EXPECT_EQ(15000, stream.getBufferSize());
    EXPECT_EQ(0, written.GetAllocatedBytes());  // NOLINT: what a moved-from stream promises
    written << "used again";
    EXPECT_EQ("used again", written.str());
    EXPECT_EQ('a', stream.peek());
}

TEST(InputStreamTest, ABufferIsFilledByTheCaller) {
    InputStream stream(4);
    stream.init("abcd", 4);
    stream.getUInt32();
    char* const small = stream.getBuffer(2);
    small[0] = 'x';
    small[1] = 'y';
    EXPECT_EQ(2, stream.getSize());
    EXPECT_EQ(4, stream.getBufferSize());
    EXPECT_EQ(0x7879, stream.getUInt16());
    char* const large = stream.getBuffer(100);
    std::fill_n(large, 100, 'z');
    EXPECT_EQ(100, stream.getSize());
    EXPECT_EQ(100, stream.getBufferSize());
    EXPECT_EQ(100, stream.GetRemainingSize());
    EXPECT_EQ('z', stream.peek());
}

TEST(InputStreamTest, AResizedBufferKeepsWhatFits) {
    InputStream stream = over("abcdef");
    stream.seekg(3);
    stream.setBufferSize(10);
    EXPECT_EQ(10, stream.getBufferSize());
    EXPECT_EQ(6, stream.getSize());
    EXPECT_EQ('d', stream.peek());
    stream.setBufferSize(2);
    EXPECT_EQ(2, stream.getSize());
    EXPECT_EQ(2, stream.tellg());
    stream.reset();
    EXPECT_EQ(0x6162, stream.getUInt16());
}

TEST(InputStreamTest, TruncatingDropsTheEnd) {
    InputStream stream = over("abcdef");
    stream.seekg(4);
    stream.truncate(100);
    EXPECT_EQ(6, stream.getSize());
    stream.truncate(5);
    EXPECT_EQ(1, stream.GetRemainingSize());
    stream.truncate(2);
    EXPECT_EQ(2, stream.tellg());
    stream.truncate(-kFar);
    EXPECT_EQ(0, stream.getSize());
    EXPECT_EQ(0, stream.tellg());
    EXPECT_EQ(6, stream.getBufferSize());
}

TEST(InputStreamTest, ResettingReadsAgainAndClearingDropsTheBytes) {
    InputStream stream = over("ab");
    stream.getUInt16();
    stream.reset();
    EXPECT_EQ(0x6162, stream.getUInt16());
    stream.clear();
    EXPECT_EQ(0, stream.getSize());
    EXPECT_EQ(0, stream.tellg());
    EXPECT_EQ(2, stream.getBufferSize());
}

TEST(InputStreamTest, MovingTakesTheBytesAndLeavesAnEmptyStream) {
    InputStream first = over("abc");
    first.getUInt8();
    InputStream second(std::move(first));
    EXPECT_EQ('b', second.peek());
    EXPECT_EQ(0, first.getSize());  // NOLINT: what a moved-from stream promises
    EXPECT_EQ(0, first.getUInt8());
    first = std::move(second);
    EXPECT_EQ('b', first.peek());
    InputStream& same = first;
    first = std::move(same);
    EXPECT_EQ('b', first.peek());
}

}  // namespace
