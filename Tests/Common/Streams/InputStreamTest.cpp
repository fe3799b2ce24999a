#include "Vl/Common/Streams/InputStream.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "Tests/Common/Streams/InputBytes.h"

namespace {

using namespace std::string_view_literals;
using Valen::InputStream;

TEST(InputStreamTest, IntegersAreReadMostSignificantByteFirst) {
    InputStream stream = over("\x7F\xAB\xCD\x01\x02\x03\x04\x11\x22\x33\x44\x55\x66\x77\x88"sv);
    EXPECT_EQ(0x7F, stream.getUInt8());
    EXPECT_EQ(0xABCD, stream.getUInt16());
    EXPECT_EQ(16909060u, stream.getUInt32());
    EXPECT_EQ(0x1122334455667788u, stream.getUInt64());
    EXPECT_TRUE(stream.eof());
}

TEST(InputStreamTest, SignedIntegersKeepTheirSign) {
    InputStream stream = over(
        "\xFE"
        "\x80\x00"
        "\xFF\xFF\xFF\xFD"
        "\x80\x00\x00\x00\x00\x00\x00\x00"sv);
    EXPECT_EQ(-2, stream.getInt8());
    EXPECT_EQ(-32768, stream.getInt16());
    EXPECT_EQ(-3, stream.getInt32());
    EXPECT_EQ(std::numeric_limits<std::int64_t>::min(), stream.getInt64());
}

TEST(InputStreamTest, UnsignedBytesAreNotSigned) {
    EXPECT_EQ(255, over("\xFF").getUInt8());
    EXPECT_EQ(0xFFFFu, over("\xFF\xFF").getUInt16());
}

TEST(InputStreamTest, AnyByteOtherThanZeroIsTrue) {
    InputStream stream = over("\x01\x7F\xFF\x00"sv);
    EXPECT_TRUE(stream.getBool());
    EXPECT_TRUE(stream.getBool());
    EXPECT_TRUE(stream.getBool());
    EXPECT_FALSE(stream.getBool());
}

TEST(InputStreamTest, CharactersAreGotOneByOne) {
    InputStream stream = over("ab");
    char first = '\0';
    char second = '\0';
    stream.get(first).get(second);
    EXPECT_EQ('a', first);
    EXPECT_EQ('b', second);
}

TEST(InputStreamTest, AStringIsReadByItsLength) {
    InputStream stream = over("\x03one\x00\x03two"sv);
    EXPECT_STREQ("one", stream.getString().c_str());
    EXPECT_STREQ("", stream.getString().c_str());
    EXPECT_STREQ("two", stream.getString().c_str());
    EXPECT_TRUE(stream.eof());
}

TEST(InputStreamTest, TheLongestStringHas255Characters) {
    InputStream stream = over('\xFF' + std::string(300, 'x'));
    EXPECT_EQ(std::string(255, 'x'), stream.getString().c_str());
    EXPECT_EQ(45, stream.GetRemainingSize());
}

TEST(InputStreamTest, AStringThatIsCutOffHasWhatThereIsAndZerosUpToItsLength) {
    InputStream stream = over(
        "\x09"
        "abc");
    const Valen::SimpleString text = stream.getString();
    EXPECT_EQ("abc\0\0\0\0\0\0\0"sv, std::string_view(text.c_str(), 10));
    EXPECT_EQ(0, stream.GetRemainingSize());
}

TEST(InputStreamTest, AStringMayHoldZeros) {
    InputStream stream = over(
        "\x05"
        "a\0b\0c"sv);
    const Valen::SimpleString text = stream.getString();
    EXPECT_EQ("a\0b\0c\0"sv, std::string_view(text.c_str(), 6));
}

TEST(InputStreamTest, ReadsPastTheEndGiveZerosAndThePositionAdvancesAllTheSame) {
    InputStream stream = over("");
    EXPECT_EQ(0, stream.getUInt8());
    EXPECT_EQ(0, stream.getUInt16());
    EXPECT_EQ(0u, stream.getUInt32());
    EXPECT_EQ(0u, stream.getUInt64());
    EXPECT_FALSE(stream.getBool());
    char character = 'x';
    stream.get(character);
    EXPECT_EQ('\0', character);
    EXPECT_EQ(17, stream.tellg());
    EXPECT_EQ(-17, stream.GetRemainingSize());
    EXPECT_STREQ("", stream.getString().c_str());
    EXPECT_EQ(-18, stream.GetRemainingSize());
}

TEST(InputStreamTest, OfAValueThatIsCutOffTheMissingBytesAreZero) {
    EXPECT_EQ(0xAB00, over("\xAB").getUInt16());
    EXPECT_EQ(0x01020300u, over("\x01\x02\x03").getUInt32());
    EXPECT_EQ(0x1122334455667700u, over("\x11\x22\x33\x44\x55\x66\x77").getUInt64());
    InputStream stream = over("\x01\x02\x03");
    stream.getUInt32();
    EXPECT_EQ(-1, stream.GetRemainingSize());
}

TEST(InputStreamTest, BehindTheEndThereIsNothingToFindOrRead) {
    InputStream stream = over("ab");
    stream.getUInt64();
    EXPECT_TRUE(stream.eof());
    EXPECT_EQ(-1, stream.peek());
    EXPECT_EQ(-1, stream.find('a'));
    EXPECT_EQ(-1, stream.find('\0'));
    char target = 'x';
    EXPECT_EQ(0, stream.read(&target, 1));
    std::string line = "x";
    EXPECT_FALSE(stream.getline(line));
    EXPECT_EQ("", line);
    EXPECT_FALSE(stream.getline(&target, 1));
    EXPECT_EQ(8, stream.tellg());
    EXPECT_EQ(7, stream.unget().tellg());
    long size = 0;
    EXPECT_EQ(stream.GetData(size) + 2, stream.GetRemainingData());
}

TEST(InputStreamTest, AnEmptyStreamAnswersToEverything) {
    InputStream stream;
    EXPECT_TRUE(stream.eof());
    EXPECT_EQ(0, stream.getSize());
    EXPECT_EQ(0, stream.getBufferSize());
    EXPECT_EQ(-1, stream.peek());
    EXPECT_EQ(-1, stream.find('x'));
    EXPECT_EQ(0, stream.unget().tellg());
    EXPECT_EQ(0, stream.seekg(5).tellg());
    EXPECT_EQ(0, stream.GetRemainingSize());
    stream.truncate(5);
    stream.clear();
    stream.reset();
    std::string text = "x";
    stream.StreamToHumanString(text);
    EXPECT_EQ("", text);
    EXPECT_EQ(0u, stream.getUInt64());
}

TEST(InputStreamTest, ReadTakesWhatThereIs) {
    InputStream stream = over("abcd");
    std::string target = "......";
    EXPECT_EQ(3, stream.read(target.data(), 3));
    EXPECT_EQ(0, stream.read(target.data(), 0));
    EXPECT_EQ(0, stream.read(target.data(), -1));
    EXPECT_EQ(1, stream.GetRemainingSize());
    EXPECT_EQ(1, stream.read(target.data() + 3, kFar));
    EXPECT_EQ("abcd..", target);
    EXPECT_TRUE(stream.eof());
}

TEST(InputStreamTest, AllBytesAreReadableByPeopleWhereverThePositionIs) {
    InputStream stream = over("A\x01");
    stream.getUInt8();
    std::string text;
    stream.StreamToHumanString(text);
    EXPECT_EQ("A\\x01", text);
    stream.StreamToHumanString(text, true);
    EXPECT_EQ("00000000 <A01", text);
    std::stringstream dump;
    stream.toHexString(dump, 1);
    EXPECT_EQ("00000000 <A", dump.str());
    EXPECT_EQ(1, stream.tellg());
}

}  // namespace
