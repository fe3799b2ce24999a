#include "Vl/Common/Identity/CRC16.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "Tests/Common/Identity/CommandOutput.h"
#include "Tests/Support/TemporaryDirectory.h"

namespace {

using Valen::CRC16::CalcCRC;
using Valen::CRC16::UpdateCRC;

unsigned int crcOf(const std::string& bytes, unsigned int start = 0) {
    return CalcCRC(bytes.data(), static_cast<int>(bytes.size()), start);
}

/// Byte by byte, which CalcCRC must equal.
unsigned int byteByByte(const std::string& bytes, unsigned int crc) {
    for (const char byte : bytes) {
        crc = UpdateCRC(static_cast<unsigned char>(byte), crc);
    }
    return crc;
}

std::string hex(const std::string& bytes) {
    std::string digits;
    for (const char byte : bytes) {
        constexpr char kDigits[] = "0123456789abcdef";
        digits += kDigits[static_cast<unsigned char>(byte) >> 4];
        digits += kDigits[static_cast<unsigned char>(byte) & 15];
    }
    return digits;
}

class CRC16Test : public testing::Test {
protected:
    std::string randomBytes(std::size_t length) {
        std::string bytes(length, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random());
        }
        return bytes;
    }

    std::mt19937 random{16};
};

TEST_F(CRC16Test, OfTheDigitsOneToNineIsTheXmodemCheckValue) {
    EXPECT_EQ(0x31C3U, crcOf("123456789"));
}

TEST_F(CRC16Test, WithAllOnesAsStartValueItIsTheOtherWellKnownCheckValue) {
    EXPECT_EQ(0x29B1U, crcOf("123456789", 0xFFFF));
}

TEST_F(CRC16Test, ALengthOfZeroReturnsTheStartValueAsGiven) {
    EXPECT_EQ(0U, CalcCRC(nullptr, 0, 0));
    EXPECT_EQ(0x1234U, CalcCRC("x", 0, 0x1234));
    EXPECT_EQ(0xABCD1234U, CalcCRC("x", 0, 0xABCD1234));
}

TEST_F(CRC16Test, ANegativeLengthReadsNothing) {
    EXPECT_EQ(0x1234U, CalcCRC(nullptr, -1, 0x1234));
    EXPECT_EQ(0x1234U, CalcCRC(nullptr, -2147483647 - 1, 0x1234));
}

TEST_F(CRC16Test, OfTheStartValueOnlyTheLowSixteenBitsCount) {
    for (const std::size_t length : {1U, 16U, 40U}) {
        const std::string bytes = randomBytes(length);
        EXPECT_EQ(crcOf(bytes, 0x1234), crcOf(bytes, 0xABCD1234));
    }
    EXPECT_EQ(UpdateCRC('x', 0x1234), UpdateCRC('x', 0xABCD1234));
}

TEST_F(CRC16Test, IsSixteenBitsWide) {
    for (unsigned int crc = 0; crc < 0x10000; ++crc) {
        ASSERT_LE(UpdateCRC(static_cast<unsigned char>(crc * 7), crc), 0xFFFFU) << crc;
    }
}

TEST_F(CRC16Test, OfABlockIsTheUpdateWithEachByteAtEveryLengthAndAlignment) {
    const std::string block = randomBytes(200);
    for (std::size_t begin = 0; begin < 17; ++begin) {
        for (std::size_t length = 0; begin + length <= block.size(); ++length) {
            const std::string bytes = block.substr(begin, length);
            const unsigned int crc = CalcCRC(&block[begin], static_cast<int>(length), 0x5AA5);
            ASSERT_EQ(byteByByte(bytes, 0x5AA5), crc) << length << " bytes from " << begin;
        }
    }
}

TEST_F(CRC16Test, ContinuesWhereAnEarlierBlockEnded) {
    const std::string bytes = randomBytes(100);
    for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
        ASSERT_EQ(crcOf(bytes), crcOf(bytes.substr(cut), crcOf(bytes.substr(0, cut)))) << cut;
    }
}

TEST_F(CRC16Test, OfDataFollowedByItsBigEndianCrcIsZero) {
    std::string record = randomBytes(54);
    const unsigned int crc = crcOf(record);
    record += static_cast<char>(crc >> 8);
    record += static_cast<char>(crc & 0xFF);
    EXPECT_EQ(0U, crcOf(record));
}

TEST_F(CRC16Test, AgreesWithPythonOnTenThousandInputs) {
    constexpr int kInputs = 10'000;
    const support::TemporaryDirectory directory;
    std::ofstream inputs(directory.file("inputs"));
    std::vector<unsigned int> ours;
    for (int i = 0; i < kInputs; ++i) {
        const std::string bytes = randomBytes(random() % 100);
        const unsigned int start = random() & 0xFFFF;
        inputs << start << ' ' << hex(bytes) << '\n';
        ours.push_back(crcOf(bytes, start));
    }
    inputs.close();
    std::istringstream witness(
        outputOf("python3 -c 'import binascii, sys\n"
                 "for line in open(sys.argv[1]):\n"
                 "    start, data = line.rstrip(\"\\n\").split(\" \")\n"
                 "    print(binascii.crc_hqx(bytes.fromhex(data), int(start)))' " +
                 directory.file("inputs")));
    std::vector<unsigned int> theirs;
    for (unsigned int crc = 0; witness >> crc;) {
        theirs.push_back(crc);
    }
    EXPECT_EQ(theirs, ours);
}

}  // namespace
