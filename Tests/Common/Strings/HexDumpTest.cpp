#include "Vl/Common/Strings/HexDump.h"

#include <gmock/gmock.h>
#include <sys/mman.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <numeric>
#include <random>
#include <vector>

#include "Tests/Common/Strings/PlainHexDump.h"

namespace {

using Bytes = std::vector<unsigned char>;

Bytes counting(std::size_t size) {
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(0));
    return bytes;
}

Bytes noise(std::size_t size) {
    std::mt19937 generator(1);
    Bytes bytes(size);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<unsigned char>(generator()); });
    return bytes;
}

int sizeOf(const Bytes& bytes) {
    return static_cast<int>(bytes.size());
}

std::string hexLines(const Bytes& bytes, int perLine) {
    std::string out;
    Valen::BinaryToHexString(bytes.data(), sizeOf(bytes), out, true, false, perLine);
    return out;
}

std::string toHex(const Bytes& bytes) {
    std::stringstream stream;
    Valen::toHexString(stream, bytes.data(), sizeOf(bytes));
    return stream.str();
}

// Lines of bytes

TEST(BinaryToHexStringTest, BytesStandInLines) {
    EXPECT_EQ(hexLines({0x00, 0x0A, 0xB1, 0xFF, 0x7F}, 4), "00 0A B1 FF \n7F");
    EXPECT_EQ(hexLines({0x00, 0x0A, 0xB1, 0xFF}, 4), "00 0A B1 FF");
    EXPECT_EQ(hexLines({0x00, 0x0A}, 1), "00 \n0A");
    EXPECT_EQ(hexLines({0x00, 0x0A}, INT_MAX), "00 0A");
}

TEST(BinaryToHexStringTest, LinesBeginWithTheMemoryAddressOfTheirFirstByte) {
    constexpr unsigned long kAddress = 0x0A0B0000;
    void* page = mmap(reinterpret_cast<void*>(kAddress), 4096, PROT_READ | PROT_WRITE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    ASSERT_EQ(page, reinterpret_cast<void*>(kAddress));
    std::memcpy(page, "ABCDE", 5);
    std::string out;
    Valen::BinaryToHexString(page, 5, out, false, false, 4);
    munmap(page, 4096);
    EXPECT_EQ(out, "0A0B0000  41 42 43 44 \n0A0B0004  45");
}

TEST(BinaryToHexStringTest, TheDefaultIsSixteenBytesOnALineWithAddresses) {
    const Bytes bytes = counting(40);
    std::string out;
    Valen::BinaryToHexString(bytes.data(), sizeOf(bytes), out);
    EXPECT_EQ(out, plainHexDump(bytes, false, 16, "%02X "));
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 2);
}

TEST(BinaryToHexStringTest, TheOldTextIsReplaced) {
    const Bytes bytes = {1, 2};
    std::string out = "old";
    Valen::BinaryToHexString(bytes.data(), 2, out, true, false, 16);
    EXPECT_EQ(out, "01 02");
}

TEST(BinaryToHexStringTest, TheTextMayBeDumpedIntoItself) {
    std::string text = "AB";
    Valen::BinaryToHexString(text.data(), 2, text, true, false, 16);
    EXPECT_EQ(text, "41 42");
}

TEST(BinaryToHexStringTest, ThePaddingOfTheLastLineIsTrimmedAwayOnPurpose) {
    const Bytes bytes = counting(5);
    std::string padded;
    Valen::BinaryToHexString(bytes.data(), 5, padded, true, true, 4);
    EXPECT_EQ(padded, "00 01 02 03 \n04");
}

TEST(BinaryToHexStringTest, NoBytesGiveAnEmptyText) {
    const Bytes bytes = {1, 2};
    for (const int size : {0, -1, INT_MIN}) {
        std::string out = "old";
        Valen::BinaryToHexString(bytes.data(), size, out);
        EXPECT_EQ(out, "") << size;
    }
    std::string out = "old";
    Valen::BinaryToHexString(nullptr, 0, out);
    EXPECT_EQ(out, "");
    Valen::BinaryToHexString(nullptr, 5, out);
    EXPECT_EQ(out, "");
}

TEST(BinaryToHexStringTest, LinesWithoutBytesGiveAnEmptyText) {
    const Bytes bytes = {1, 2};
    for (const int perLine : {0, -1, INT_MIN}) {
        EXPECT_EQ(hexLines(bytes, perLine), "") << perLine;
    }
}

TEST(BinaryToHexStringTest, ALineIsCutAt4999Characters) {
    const std::string out = hexLines(Bytes(2000, 0x5A), 2000);
    EXPECT_EQ(out.size(), 4999U);
    EXPECT_TRUE(out.ends_with(" 5A 5"));
}

TEST(BinaryToHexStringTest, ACutLineIsFollowedByTheNext) {
    const std::string out = hexLines(Bytes(2001, 0x5A), 2000);
    EXPECT_EQ(out.substr(4995), "5A 5\n5A");
}

struct Shape {
    std::size_t size;
    int perLine;
};

class HexDumpShapeTest : public testing::TestWithParam<Shape> {};

TEST_P(HexDumpShapeTest, IsThePlainLoops) {
    const auto [size, perLine] = GetParam();
    const Bytes bytes = noise(size);
    for (const bool withoutAddress : {false, true}) {
        for (const char* format : {"%02X ", "%02x,", " %3d", "0x%02X\t"}) {
            std::string out;
            Valen::BinaryToXXXString(bytes.data(), sizeOf(bytes), out, withoutAddress, false, perLine,
                                     format);
            EXPECT_EQ(out, plainHexDump(bytes, withoutAddress, perLine, format)) << format;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, HexDumpShapeTest,
                         testing::Values(Shape{1, 1}, Shape{15, 16}, Shape{16, 16}, Shape{17, 16},
                                         Shape{5120, 16}, Shape{5120, 32}, Shape{255, 7}, Shape{3000, 1659},
                                         Shape{3000, 1660}, Shape{3000, 1661}, Shape{3000, 1662},
                                         Shape{3000, 1665}, Shape{3000, 1666}, Shape{3000, 1667},
                                         Shape{3000, 3000}));

// Any format

TEST(BinaryToXXXStringTest, EveryBytePassesThroughTheFormat) {
    const Bytes bytes = {1, 200, 3};
    std::string out;
    Valen::BinaryToXXXString(bytes.data(), 3, out, true, false, 2, "[%d]");
    EXPECT_EQ(out, "[1][200]\n[3]");
}

TEST(BinaryToXXXStringTest, WhiteSpaceAtBothEndsIsTrimmed) {
    const Bytes bytes = {1, 2};
    std::string out;
    Valen::BinaryToXXXString(bytes.data(), 2, out, true, false, 16, " %X\t");
    EXPECT_EQ(out, "1\t 2");
}

TEST(BinaryToXXXStringTest, AFormatMayBeLongerThanTheLine) {
    const Bytes bytes = {1, 2, 3};
    std::string out;
    Valen::BinaryToXXXString(bytes.data(), 3, out, true, false, 16, "%06000d");
    EXPECT_EQ(out, std::string(4999, '0'));
}

TEST(BinaryToXXXStringTest, AFormatMayPrintNothing) {
    const Bytes bytes = {1, 2, 3};
    std::string out = "old";
    Valen::BinaryToXXXString(bytes.data(), 3, out, true, false, 1, "");
    EXPECT_EQ(out, "");
}

// Digits alone

TEST(BinaryToHexSimpleTest, TwoUpperCaseDigitsForEachByte) {
    const Bytes bytes = {0x0A, 0x1B, 0xFF, 0x00};
    EXPECT_EQ(Valen::BinaryToHexSimple(bytes.data(), 4), "0A1BFF00");
    EXPECT_EQ(Valen::BinaryToHexSimple(bytes.data(), 1), "0A");
}

TEST(BinaryToHexSimpleTest, DigitsReadBackAsTheByte) {
    const Bytes bytes = counting(256);
    const std::string digits = Valen::BinaryToHexSimple(bytes.data(), 256);
    ASSERT_EQ(digits.size(), 512U);
    for (std::size_t byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(std::strtoul(digits.substr(2 * byte, 2).c_str(), nullptr, 16), byte);
    }
}

TEST(BinaryToHexSimpleTest, NoBytesGiveAnEmptyText) {
    EXPECT_EQ(Valen::BinaryToHexSimple("a", 0), "");
    EXPECT_EQ(Valen::BinaryToHexSimple("a", -5), "");
    EXPECT_EQ(Valen::BinaryToHexSimple(nullptr, 5), "");
}

// Into a stream

TEST(ToHexStringTest, GroupsOfFourBytesFollowTheOffset) {
    EXPECT_EQ(toHex({0x01, 0x02, 0x03, 0x04, 0xFE}), "00000000 01020304 fe");
}

TEST(ToHexStringTest, EveryThirtyTwoBytesANewLineBegins) {
    EXPECT_EQ(toHex(Bytes(33, 0xAB)),
              "00000000 abababab abababab abababab abababab abababab abababab abababab abababab\n"
              "00000020 ab");
}

TEST(ToHexStringTest, NoNewLineFollowsAFullLine) {
    EXPECT_EQ(toHex(Bytes(32, 0)),
              "00000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000 00000000");
}

TEST(ToHexStringTest, BytesFromZeroToSmallZShowTheirCharacterOnPurpose) {
    EXPECT_EQ(toHex({'/', '0', '9', ':', '@', 'A', '_', 'z', '{', ' '}), "00000000 2f<0<9<: <@<A<_<z 7b20");
}

TEST(ToHexStringTest, EveryByteIsThePlainLoops) {
    const Bytes bytes = counting(256);
    std::stringstream expected;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (index % 32 == 0) {
            expected << (index == 0 ? "" : "\n") << std::hex << std::setfill('0') << std::setw(8) << index;
        }
        expected << (index % 4 == 0 ? " " : "");
        if (bytes[index] >= 0x30 && bytes[index] <= 0x7A) {
            expected << '<' << static_cast<char>(bytes[index]);
        } else {
            expected << std::hex << std::setfill('0') << std::setw(2) << static_cast<int>(bytes[index]);
        }
    }
    EXPECT_EQ(toHex(bytes), expected.str());
}

TEST(ToHexStringTest, TheDumpIsAppendedAndTheStreamsFormattingNeitherMattersNorChanges) {
    std::stringstream stream;
    stream << std::uppercase << "old:" << std::setw(30);
    Valen::toHexString(stream, "\xAB", 1);
    stream << std::setw(0) << '|' << 17;
    EXPECT_EQ(stream.str(), "old:00000000 ab|17");
}

TEST(ToHexStringTest, NoBytesWriteNothing) {
    std::stringstream stream;
    Valen::toHexString(stream, "a", 0);
    Valen::toHexString(stream, "a", -1);
    Valen::toHexString(stream, nullptr, 5);
    EXPECT_EQ(stream.str(), "");
}

}  // namespace
