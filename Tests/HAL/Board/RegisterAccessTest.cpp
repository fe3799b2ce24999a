// Bytes and halfwords of the register space: which accesses are made, and what becomes of the data.
#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>
#include <vector>

#include "Tests/HAL/Board/FpgaBoard.h"

namespace {

using boardsim::Direction;
using boardsim::RegisterAccess;
using support::Read16;
using support::Read32;
using support::Read8;
using support::Write16;
using support::Write32;
using support::Write8;
using testing::ElementsAre;
using testing::IsEmpty;

using Buffer = std::array<unsigned char, 0x100>;

constexpr unsigned int kFirst = 0x1000;
constexpr unsigned int kMostBytes = 67;

/// Bytes that are all different, as far as that goes.
Buffer numbered(unsigned int from) {
    Buffer bytes;
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(from));
    return bytes;
}

std::uint64_t valueAt(const unsigned char* bytes, unsigned int width) {
    std::uint64_t value = 0;
    for (unsigned int i = width; i-- > 0;) {
        value = value << 8 | bytes[i];
    }
    return value;
}

/// The widths of the accesses that move so many bytes from that offset on.
std::vector<unsigned int> widthsOf(unsigned int offset, int count) {
    std::vector<unsigned int> widths;
    const auto take = [&](unsigned int width) {
        widths.push_back(width);
        offset += width;
        count -= static_cast<int>(width);
    };
    if ((offset & 1) != 0) {
        take(1);
    }
    if ((offset & 2) != 0) {
        take(2);
    }
    while (count > 3) {
        take(4);
    }
    if (count > 1) {
        take(2);
    }
    if (count > 0) {
        take(1);
    }
    return widths;
}

class RegisterAccessTest : public FpgaBoard {
protected:
    void fillRegisters(const Buffer& bytes) {
        for (unsigned int i = 0; i < bytes.size(); ++i) {
            registers.set8(kFirst + i, bytes[i]);
        }
    }
    Buffer registerBytes() const {
        Buffer bytes;
        for (unsigned int i = 0; i < bytes.size(); ++i) {
            bytes[i] = registers.get8(kFirst + i);
        }
        return bytes;
    }
};

TEST_F(RegisterAccessTest, BytesFromAnOddOffsetAreAByteAndThenNoMoreThanIsAligned) {
    registers.set32(0x10, 0x44332211);
    registers.set32(0x14, 0x88776655);
    std::array<unsigned char, 4> bytes{};
    board.readFPGABytes(0x13, bytes.data(), 4);
    EXPECT_THAT(registers.accesses(), ElementsAre(Read8(0x13), Read16(0x14), Read8(0x16)));
    EXPECT_THAT(bytes, ElementsAre(0x44, 0x55, 0x66, 0x77));
}

TEST_F(RegisterAccessTest, BytesAreReadWithNaturallyAlignedAccessesOnlyWhereverTheyAre) {
    const Buffer content = numbered(0x40);
    fillRegisters(content);
    for (unsigned int skip = 0; skip < 8; ++skip) {
        for (unsigned int count = skip % 4 == 0 ? 0 : 3; count <= kMostBytes; ++count) {
            Buffer expected = numbered(0);
            Buffer buffer = expected;
            std::vector<RegisterAccess> accesses;
            unsigned int at = skip;
            for (const unsigned int width : widthsOf(skip, static_cast<int>(count))) {
                accesses.push_back({kFirst + at, valueAt(&content[at], width),
                                    static_cast<std::uint8_t>(width), Direction::Read});
                at += width;
            }
            std::copy_n(&content[skip], count, &expected[1]);
            registers.clearAccesses();
            board.readFPGABytes(kFirst + skip, &buffer[1], count);
            ASSERT_EQ(accesses, registers.accesses()) << skip << ' ' << count;
            ASSERT_EQ(expected, buffer) << skip << ' ' << count;
        }
    }
}

TEST_F(RegisterAccessTest, BytesAreWrittenWithNaturallyAlignedAccessesOnlyWhereverTheyGo) {
    const Buffer buffer = numbered(0x40);
    for (unsigned int skip = 0; skip < 8; ++skip) {
        for (unsigned int count = skip % 4 == 0 ? 0 : 3; count <= kMostBytes; ++count) {
            Buffer expected = numbered(0x90);
            fillRegisters(expected);
            std::vector<RegisterAccess> accesses;
            unsigned int done = 0;
            for (const unsigned int width : widthsOf(skip, static_cast<int>(count))) {
                accesses.push_back({kFirst + skip + done, valueAt(&buffer[1 + done], width),
                                    static_cast<std::uint8_t>(width), Direction::Write});
                done += width;
            }
            std::copy_n(&buffer[1], count, &expected[skip]);
            registers.clearAccesses();
            board.writeFPGABytes(kFirst + skip, &buffer[1], count);
            ASSERT_EQ(accesses, registers.accesses()) << skip << ' ' << count;
            ASSERT_EQ(expected, registerBytes()) << skip << ' ' << count;
        }
    }
}

TEST_F(RegisterAccessTest, TheBytesUpToTheFirstWordAreMovedWithoutALookAtTheCountOnPurpose) {
    std::array<unsigned char, 3> bytes = {1, 2, 3};
    board.readFPGABytes(0x11, bytes.data(), 0);
    board.writeFPGABytes(0x21, bytes.data(), 1);
    board.readFPGABytes(0x32, bytes.data(), 0);
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Read8(0x11), Read16(0x12), Write8(0x21), Write16(0x22), Read16(0x32)));
}

TEST_F(RegisterAccessTest, TwoUnitsOf16BitsAreOneRegisterInWhicheverLaneTheyAppear) {
    registers.set32(0x20, 0x00001234);
    registers.set32(0x24, 0x56780000);
    registers.set32(0x28, 0xF00F0FF0);
    std::array<std::uint32_t, 4> items = {9, 9, 9, 9};
    board.readFPGAHalfwords(0x20, items.data(), 6);
    EXPECT_THAT(items, ElementsAre(0x1234, 0x5678, 0xFFFF, 9));
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(0x20), Read32(0x24), Read32(0x28)));
}

TEST_F(RegisterAccessTest, AnOddLastUnitIsOne16BitAccess) {
    registers.set32(0x20, 0x00001234);
    registers.set32(0x24, 0xAAAA5678);
    std::array<std::uint32_t, 2> items = {0, 0x99999999};
    board.readFPGAHalfwords(0x20, items.data(), 3);
    EXPECT_THAT(items, ElementsAre(0x1234, 0x99995678));
    board.writeFPGAHalfwords(0x30, items.data(), 3);
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Read32(0x20), Read16(0x24), Write32(0x30, 0x1234), Write16(0x34, 0x5678)));
}

TEST_F(RegisterAccessTest, OnlyTheLowHalfOfAnItemIsWritten) {
    const std::array<std::uint32_t, 2> items = {0xABCD1234, 0xFFFFFFFF};
    board.writeFPGAHalfwords(0x30, items.data(), 4);
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(0x30, 0x1234), Write32(0x34, 0xFFFF)));
}

TEST_F(RegisterAccessTest, HalfwordsAreReadFromAnyOffsetAndIntoAnyBuffer) {
    const Buffer content = numbered(0x37);
    fillRegisters(content);
    for (unsigned int skip = 0; skip < 8; ++skip) {
        for (unsigned int count = 0; count <= kMostBytes; ++count) {
            Buffer expected = numbered(0);
            Buffer buffer = expected;
            std::vector<RegisterAccess> accesses;
            unsigned int done = 0;
            for (unsigned int unit = count; unit > 1; unit -= 2, done += 4) {
                const auto word = static_cast<std::uint32_t>(valueAt(&content[skip + done], 4));
                const std::uint32_t item = (word | word >> 16) & 0xFFFF;
                accesses.push_back({kFirst + skip + done, word, 4, Direction::Read});
                std::memcpy(&expected[1 + done], &item, 4);
            }
            if (count % 2 != 0) {
                accesses.push_back(
                    {kFirst + skip + done, valueAt(&content[skip + done], 2), 2, Direction::Read});
                std::copy_n(&content[skip + done], 2, &expected[1 + done]);
            }
            registers.clearAccesses();
            board.readFPGAHalfwords(kFirst + skip, &buffer[1], count);
            ASSERT_EQ(accesses, registers.accesses()) << skip << ' ' << count;
            ASSERT_EQ(expected, buffer) << skip << ' ' << count;
        }
    }
}

TEST_F(RegisterAccessTest, HalfwordsAreWrittenToAnyOffsetAndFromAnyBuffer) {
    const Buffer buffer = numbered(0x37);
    for (unsigned int skip = 0; skip < 8; ++skip) {
        for (unsigned int count = 0; count <= kMostBytes; ++count) {
            Buffer expected = numbered(0x90);
            fillRegisters(expected);
            std::vector<RegisterAccess> accesses;
            unsigned int done = 0;
            for (unsigned int unit = count; unit > 1; unit -= 2, done += 4) {
                const std::uint64_t item = valueAt(&buffer[1 + done], 2);
                accesses.push_back({kFirst + skip + done, item, 4, Direction::Write});
                std::memcpy(&expected[skip + done], &item, 4);
            }
            if (count % 2 != 0) {
                accesses.push_back(
                    {kFirst + skip + done, valueAt(&buffer[1 + done], 2), 2, Direction::Write});
                std::copy_n(&buffer[1 + done], 2, &expected[skip + done]);
            }
            registers.clearAccesses();
            board.writeFPGAHalfwords(kFirst + skip, &buffer[1], count);
            ASSERT_EQ(accesses, registers.accesses()) << skip << ' ' << count;
            ASSERT_EQ(expected, registerBytes()) << skip << ' ' << count;
        }
    }
}

TEST_F(RegisterAccessTest, WhatLiesBehindTheLastRegisterIsNotTouched) {
    std::array<unsigned char, 64> bytes{};
    board.readFPGABytes(kLength - 5, bytes.data(), 64);
    board.readFPGAHalfwords(kLength - 6, bytes.data(), 32);
    board.readFPGAHalfwords(kLength - 4, bytes.data(), 3);
    EXPECT_THAT(registers.accesses(), ElementsAre(Read8(kLength - 5), Read32(kLength - 4),
                                                  Read32(kLength - 6), Read32(kLength - 4)));
    registers.clearAccesses();
    board.writeFPGABytes(kLength, bytes.data(), 8);
    board.writeFPGABytes(0xFFFFFFFF, bytes.data(), 8);
    board.writeFPGAHalfwords(kLength - 1, bytes.data(), 1);
    board.writeFPGAHalfwords(0xFFFFFFFE, bytes.data(), 0xFFFFFFFF);
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

class UnmappedRegisterAccessTest : public BoardWorld {};

TEST_F(UnmappedRegisterAccessTest, NothingIsMovedWithoutRegisters) {
    TestBoard board;
    std::array<unsigned char, 8> bytes = {1, 2, 3, 4, 5, 6, 7, 8};
    board.readFPGABytes(0, bytes.data(), 8);
    board.readFPGAHalfwords(0, bytes.data(), 4);
    board.writeFPGABytes(1, bytes.data(), 8);
    board.writeFPGAHalfwords(0, bytes.data(), 4);
    EXPECT_THAT(bytes, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
}

}  // namespace
