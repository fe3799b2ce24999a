#include "Vl/Common/Streams/OutputStream.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <utility>

namespace {

using namespace std::string_view_literals;
using Valen::OutputStream;

TEST(OutputStreamTest, IntegersAreWrittenMostSignificantByteFirst) {
    OutputStream stream;
    stream.putUInt8(0x7F);
    stream.putUInt16(0xABCD);
    stream.putUInt32(16909060);
    stream.putUInt64(0x1122334455667788);
    EXPECT_EQ("\x7F\xAB\xCD\x01\x02\x03\x04\x11\x22\x33\x44\x55\x66\x77\x88"sv, stream.str());
}

TEST(OutputStreamTest, OneByteKeepsTheLowEightBits) {
    OutputStream stream;
    stream.putUInt8(-2);
    stream.putUInt8(0x123);
    stream.put('z');
    stream.put('\x80');
    EXPECT_EQ("\xFE\x23z\x80"sv, stream.str());
}

TEST(OutputStreamTest, BooleansAreOneOrZero) {
    OutputStream stream;
    stream.putBool(true);
    stream.putBool(false);
    EXPECT_EQ("\x01\x00"sv, stream.str());
}

TEST(OutputStreamTest, AStringIsItsLengthAndItsCharactersWithoutTerminator) {
    OutputStream stream;
    stream.putString("OLED");
    stream.putString("");
    EXPECT_EQ("\x04OLED\x00"sv, stream.str());
}

TEST(OutputStreamTest, ALongStringIsCutTo255CharactersOnPurpose) {
    OutputStream stream;
    stream.putString(std::string(300, 'x').c_str());
    EXPECT_EQ('\xFF' + std::string(255, 'x'), stream.str());
}

TEST(OutputStreamTest, AStringOf255CharactersIsWrittenWhole) {
    for (const std::size_t length : {254, 255}) {
        OutputStream stream;
        stream.putString(std::string(length, 'x').c_str());
        EXPECT_EQ(static_cast<char>(length) + std::string(length, 'x'), stream.str());
    }
}

TEST(OutputStreamTest, RawTextsHaveNeitherLengthNorTerminator) {
    OutputStream other;
    other << "other";
    OutputStream stream;
    stream.write("a\0bc", 3);
    stream << std::string("d\0e", 3) << 'f' << "gh" << other;
    EXPECT_EQ("a\0bd\0efghother"sv, stream.str());
}

TEST(OutputStreamTest, NullTextsAreEmpty) {
    const char* const nothing = nullptr;
    OutputStream stream;
    stream.putString(nothing);
    stream.write(nothing, 5);
    stream << nothing;
    stream.SetData(nothing, 0);
    EXPECT_EQ("", stream.str());
    stream.putString(nothing);
    EXPECT_EQ("\0"sv, stream.str());
}

TEST(OutputStreamTest, UnsafePutsWriteTheSameIntoReservedRoom) {
    OutputStream stream(1);
    stream.ensureBufferSpace(15);
    EXPECT_EQ(16, stream.GetAllocatedBytes());
    stream.unsafePutUInt8(0x17F);
    stream.unsafePutUInt16(0xABCD);
    stream.unsafePutUInt32(0x01020304);
    stream.unsafePutUInt64(0x1122334455667788);
    EXPECT_EQ("\x7F\xAB\xCD\x01\x02\x03\x04\x11\x22\x33\x44\x55\x66\x77\x88"sv, stream.str());
    EXPECT_EQ(16, stream.GetAllocatedBytes());
}

TEST(OutputStreamTest, AFieldWrittenEarlierIsPatched) {
    OutputStream stream;
    stream.putUInt16(0);
    stream << "body";
    const unsigned int end = stream.GetAndThenSetOffset(0);
    EXPECT_EQ(6u, end);
    EXPECT_EQ(0, stream.GetSize());
    stream.putUInt16(0x0004);
    EXPECT_EQ(2u, stream.GetAndThenSetOffset(end));
    EXPECT_EQ(
        "\x00\x04"
        "body"sv,
        stream.str());
}

TEST(OutputStreamTest, AnOffsetBehindTheCapacityGrowsTheBuffer) {
    OutputStream stream(4);
    stream << std::string("abcd");
    stream.SetOffset(9);
    EXPECT_EQ(16, stream.GetAllocatedBytes());
    stream.put('x');
    EXPECT_EQ("abcd\0\0\0\0\0x"sv, stream.str());
    stream.SetOffset(16);
    EXPECT_EQ(16, stream.GetAllocatedBytes());
    EXPECT_EQ(16u, stream.GetOffset());
}

TEST(OutputStreamTest, PositionsAreToldAndSought) {
    OutputStream stream;
    EXPECT_EQ(0, stream.tellp());
    stream << "abcd";
    EXPECT_EQ(4, stream.tellp());
    stream.seekp(1) << 'X';
    EXPECT_EQ(2, stream.tellp());
    stream.seekp(-5);
    EXPECT_EQ(0, stream.tellp());
    stream.SetOffset(4);
    EXPECT_EQ("aXcd", stream.str());
}

TEST(OutputStreamTest, ClearingKeepsTheCapacity) {
    OutputStream stream(2);
    stream << std::string("abcdef");
    stream.clear();
    EXPECT_EQ(0, stream.GetSize());
    EXPECT_EQ(8, stream.GetAllocatedBytes());
    EXPECT_EQ("", stream.str());
}

TEST(OutputStreamTest, ResettingStartsWithAClearBufferOfTheNewCapacity) {
    OutputStream stream;
    stream << "abc";
    stream.Reset(3);
    EXPECT_EQ(0, stream.GetSize());
    EXPECT_EQ(3, stream.GetAllocatedBytes());
    EXPECT_EQ("\0\0\0"sv, std::string_view(stream.GetRawData(), 3));
}

TEST(OutputStreamTest, ContentsAreReplaced) {
    OutputStream stream(4);
    stream << "old";
    stream.SetData("bytes", 5);
    EXPECT_EQ("bytes", stream.str());
    stream.str("text");
    EXPECT_EQ("text", stream.str());
    EXPECT_EQ(4, stream.GetSize());
}

TEST(OutputStreamTest, DataAndSizeAreHandedOut) {
    OutputStream stream;
    stream << "abc";
    int size = -1;
    EXPECT_EQ(stream.GetRawData(), stream.GetData(size));
    EXPECT_EQ(3, size);
    EXPECT_EQ(stream.GetRawData(), stream.GetData());
    EXPECT_EQ("abc", std::string(std::as_const(stream).GetData(), 3));
}

TEST(OutputStreamTest, AStreamNeverFails) {
    OutputStream stream(0);
    EXPECT_FALSE(!stream);
    stream << "x";
    EXPECT_FALSE(!stream);
}

TEST(OutputStreamTest, AStreamIsWrittenToItself) {
    OutputStream stream(3);
    stream << std::string("abc");
    stream << stream;
    stream << stream;
    EXPECT_EQ("abcabcabcabc", stream.str());
}

TEST(OutputStreamTest, MovingTakesTheBytesAndLeavesAUsableStream) {
    OutputStream first;
    first << "abc";
    OutputStream second(std::move(first));
    EXPECT_EQ("abc", second.str());
    EXPECT_EQ(0, first.GetSize());            // NOLINT: what a moved-from stream promises
    EXPECT_EQ(0, first.GetAllocatedBytes());  // NOLINT
    EXPECT_EQ("", first.str());
    first << "new";
    EXPECT_EQ("new", first.str());

    first = std::move(second);
    EXPECT_EQ("abc", first.str());
    OutputStream& same = first;
    first = std::move(same);
    EXPECT_EQ("abc", first.str());
}

TEST(OutputStreamTest, BytesAreReadableByPeople) {
    OutputStream stream;
    stream << std::string("a~ \\\0\x1F\x7F\xFF", 8);
    std::string text = "replaced";
    stream.StreamToHumanString(text);
    EXPECT_EQ("a~ \\\\\\x00\\x1F\\x7F\\xFF", text);
}

TEST(OutputStreamTest, PeopleMayAskForAHexDump) {
    OutputStream stream;
    stream << std::string("\1\2\3\4A", 5);
    std::string text = "replaced";
    stream.StreamToHumanString(text, true);
    EXPECT_EQ("00000000 01020304 <A", text);
}

TEST(OutputStreamTest, AHexDumpIsAddedUpToALimit) {
    OutputStream stream;
    stream << std::string(33, '\x01');
    std::stringstream text;
    text << "dump: ";
    stream.toHexString(text, 2);
    EXPECT_EQ("dump: 00000000 0101", text.str());
    for (const int none : {0, -1}) {
        std::stringstream empty;
        stream.toHexString(empty, none);
        EXPECT_EQ("", empty.str());
    }
    std::stringstream all;
    stream.toHexString(all);
    EXPECT_THAT(all.str(), testing::EndsWith("\n00000020 01"));
}

}  // namespace
