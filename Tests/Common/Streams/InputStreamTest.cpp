#include "Vl/Common/Streams/InputStream.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "Vl/Common/Streams/OutputStream.h"

namespace {

using namespace std::string_view_literals;
using Valen::InputStream;

InputStream over(std::string_view bytes) {
    return {bytes.data(), bytes.size()};
}

constexpr long kFar = std::numeric_limits<long>::max();

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

TEST(InputStreamTest, PeekingLeavesThePositionAndUngetGoesBack) {
    InputStream stream = over(
        "\xFF"
        "b");
    EXPECT_EQ(255, stream.peek());
    EXPECT_EQ(255, stream.getUInt8());
    EXPECT_EQ('b', stream.peek());
    EXPECT_EQ(255, stream.unget().peek());
    EXPECT_EQ(0, stream.unget().tellg());
}

TEST(InputStreamTest, TheEndIsReachedWithTheLastByte) {
    InputStream stream = over("a");
    EXPECT_FALSE(stream.eof());
    stream.getUInt8();
    EXPECT_TRUE(stream.eof());
    EXPECT_EQ(0, stream.GetRemainingSize());
    EXPECT_EQ(-1, stream.peek());
}

TEST(InputStreamTest, ThePositionIsSoughtFromStartPlaceAndEnd) {
    InputStream stream = over("abcdef");
    EXPECT_EQ('c', stream.seekg(2).peek());
    EXPECT_EQ('d', stream.seekg(1, std::ios_base::cur).peek());
    EXPECT_EQ('b', stream.seekg(-2, std::ios_base::cur).peek());
    EXPECT_EQ('f', stream.seekg(-1, std::ios_base::end).peek());
    EXPECT_EQ('e', stream.seekg(4, std::ios_base::beg).peek());
    EXPECT_EQ("ef", std::string(stream.GetRemainingData(), 2));
}

TEST(InputStreamTest, PlacesOutsideAreTheStartOrTheEnd) {
    for (const auto origin : {std::ios_base::beg, std::ios_base::cur, std::ios_base::end}) {
        InputStream stream = over("abcdef");
        stream.seekg(3);
        EXPECT_EQ(6, stream.seekg(kFar, origin).tellg());
        EXPECT_EQ(0, stream.seekg(-kFar - 1, origin).tellg());
        stream.seekg(6);
        stream.getUInt64();
        EXPECT_EQ(6, stream.seekg(kFar, origin).tellg());
        stream.getUInt64();
        EXPECT_EQ(0, stream.seekg(-kFar, origin).tellg());
    }
}

TEST(InputStreamTest, FindingTellsTheDistanceFromThePosition) {
    InputStream stream = over("a,b,c\xFF"sv);
    EXPECT_EQ(1, stream.find(','));
    stream.seekg(2);
    EXPECT_EQ(1, stream.find(','));
    EXPECT_EQ(0, stream.find('b'));
    EXPECT_EQ(3, stream.find('\xFF'));
    EXPECT_EQ(-1, stream.find('a'));
    EXPECT_EQ(2, stream.tellg());
}

TEST(InputStreamTest, LinesAreReadWithoutTheirDelimiter) {
    InputStream stream = over("one\n\ntwo");
    std::string line;
    EXPECT_TRUE(stream.getline(line));
    EXPECT_EQ("one", line);
    EXPECT_TRUE(stream.getline(line));
    EXPECT_EQ("", line);
    EXPECT_TRUE(stream.getline(line));
    EXPECT_EQ("two", line);
    EXPECT_FALSE(stream.getline(line));
    EXPECT_EQ("", line);
}

TEST(InputStreamTest, ALineThatIsTooLongIsReadInPieces) {
    InputStream stream = over("abcdef;g");
    char text[4];
    EXPECT_FALSE(stream.getline(text, sizeof text, ';'));
    EXPECT_STREQ("abc", text);
    EXPECT_TRUE(stream.getline(text, sizeof text, ';'));
    EXPECT_STREQ("def", text);
    EXPECT_TRUE(stream.getline(text, sizeof text, ';'));
    EXPECT_STREQ("g", text);
    EXPECT_FALSE(stream.getline(text, sizeof text, ';'));
    EXPECT_STREQ("", text);
}

TEST(InputStreamTest, ALineNeedsRoomForItsTerminator) {
    InputStream stream = over("abc");
    char text[1] = {'x'};
    EXPECT_FALSE(stream.getline(text, 0));
    EXPECT_FALSE(stream.getline(text, -kFar));
    EXPECT_EQ('x', text[0]);
    EXPECT_FALSE(stream.getline(text, 1));
    EXPECT_EQ('\0', text[0]);
    EXPECT_EQ(0, stream.tellg());
}

TEST(InputStreamTest, GetlineTakesWhatTheStandardStreamTakes) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(random() % 12, '\0');
        for (char& byte : bytes) {
            byte = "ab\n"[random() % 3];
        }
        const long size = 1 + static_cast<long>(random() % 5);
        std::istringstream standard(bytes);
        InputStream stream = over(bytes);
        while (true) {
            char expected[8];
            char text[8];
            const bool ok = !!standard.getline(expected, size);
            EXPECT_EQ(ok, stream.getline(text, size)) << testing::PrintToString(bytes) << size;
            EXPECT_STREQ(expected, text);
            const bool ended = standard.eof();
            standard.clear();
            EXPECT_EQ(standard.tellg(), stream.tellg()) << testing::PrintToString(bytes) << size;
            if (ended || standard.gcount() == 0) {
                break;
            }
        }
    }
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
