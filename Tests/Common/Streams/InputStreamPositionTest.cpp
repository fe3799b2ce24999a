#include "Vl/Common/Streams/InputStream.h"

#include <gmock/gmock.h>

#include <random>
#include <sstream>
#include <string>
#include <string_view>

#include "Tests/Common/Streams/InputBytes.h"

namespace {

using namespace std::string_view_literals;
using Valen::InputStream;

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

}  // namespace
