#include "Tools/boardsim/Models/W1Eeprom.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using boardsim::FaultSchedule;
using boardsim::FileAnswer;
using boardsim::W1Eeprom;
using boardsim::W1EepromMemory;

std::span<const std::byte> bytes(std::string_view text) {
    return std::as_bytes(std::span(text));
}

struct Chip {
    W1Eeprom eeprom{0x1234};

    std::string read(std::uint64_t offset, std::size_t count, FileAnswer* answer = nullptr) {
        std::string text(count, '?');
        const FileAnswer given = eeprom.read(offset, std::as_writable_bytes(std::span(text)));
        if (answer != nullptr) {
            *answer = given;
        }
        return text.substr(0, given.count);
    }
    FileAnswer write(std::uint64_t offset, std::string_view text) {
        return eeprom.write(offset, bytes(text));
    }
    std::string stored(std::size_t offset, std::size_t count) {
        std::string text;
        for (const std::byte byte : eeprom.memory().bytes().subspan(offset, count)) {
            text += static_cast<char>(byte);
        }
        return text;
    }
    bool program(std::size_t row, std::string_view text) {
        W1EepromMemory::Row wanted{};
        std::copy_n(bytes(text).begin(), wanted.size(), wanted.begin());
        return eeprom.memory().program(row, wanted);
    }
};

TEST(W1EepromTest, ComesFromTheFactoryWithZerosAndItsRegisters) {
    Chip chip;
    EXPECT_EQ(std::string(128, '\0'), chip.read(0, 200));
    EXPECT_EQ(std::string("\0\0\0\0\0\x55\0\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 16), chip.stored(0x80, 16));
    EXPECT_EQ("2d-000000001234", chip.eeprom.id().name());
}

TEST(W1EepromTest, KeepsWhatIsWrittenAcrossRowsAndPages) {
    Chip chip;
    const std::string text = "across a row of eight and a page of thirty-two bytes";
    EXPECT_EQ(text.size(), chip.write(5, text).count);
    EXPECT_EQ(text, chip.read(5, text.size()));
    EXPECT_EQ(std::string(5, '\0'), chip.read(0, 5));
    EXPECT_EQ(std::string(1, '\0'), chip.read(5 + text.size(), 1));
}

TEST(W1EepromTest, ReadingEndsAtTheEndOfTheFile) {
    Chip chip;
    EXPECT_EQ(2U, chip.read(126, 10).size());
    EXPECT_EQ("", chip.read(128, 1));
    EXPECT_EQ("", chip.read(~std::uint64_t{0}, 1));
}

TEST(W1EepromTest, WritingEndsAtTheEndOfTheFileAndIsRefusedThere) {
    Chip chip;
    EXPECT_EQ(2U, chip.write(126, "abc").count);
    EXPECT_EQ("ab", chip.read(126, 2));
    EXPECT_EQ(std::errc::file_too_large, chip.write(128, "x").error);
    EXPECT_EQ(std::string(1, '\0'), chip.stored(0x80, 1));
}

TEST(W1EepromTest, APageThatWasReadIsReadAgainOnlyAfterAWriteToAnyPage) {
    Chip chip;
    chip.eeprom.faults().crcErrors = FaultSchedule(0, 1);
    const std::string wrong = chip.read(0, 4);
    EXPECT_NE(std::string(4, '\0'), wrong);
    EXPECT_EQ(wrong, chip.read(0, 4));
    chip.write(127, std::string(1, '\0'));
    EXPECT_EQ(std::string(4, '\0'), chip.read(0, 4));
}

TEST(W1EepromTest, ACrcErrorStaysInItsPage) {
    Chip chip;
    chip.read(0, 32);
    chip.eeprom.faults().crcErrors = FaultSchedule(0, 1);
    EXPECT_EQ(std::string(32, '\0'), chip.read(0, 32));
    EXPECT_NE(std::string(32, '\0'), chip.read(32, 32));
    EXPECT_EQ(std::string(64, '\0'), chip.read(64, 64));
}

TEST(W1EepromTest, ShortTransfersOfSeveralBytesMoveHalf) {
    Chip chip;
    chip.eeprom.faults().shortReads = FaultSchedule(0, 2);
    chip.eeprom.faults().shortWrites = FaultSchedule(0, 1);
    EXPECT_EQ(8U, chip.read(0, 16).size());
    EXPECT_EQ(1U, chip.read(0, 1).size());
    EXPECT_EQ(1U, chip.read(0, 3).size());
    EXPECT_EQ(16U, chip.read(0, 16).size());
    EXPECT_EQ(3U, chip.write(0, "abcdef").count);
    EXPECT_EQ(std::string("abc\0", 4), chip.read(0, 4));
    EXPECT_EQ(6U, chip.write(0, "abcdef").count);
}

TEST(W1EepromTest, AChipOffTheBusAnswersWithAnIoError) {
    Chip chip;
    chip.write(0, "kept");
    chip.eeprom.unplug();
    FileAnswer answer;
    EXPECT_EQ("", chip.read(0, 4, &answer));
    EXPECT_EQ(std::errc::io_error, answer.error);
    EXPECT_EQ(std::errc::io_error, chip.write(0, "lost").error);
    chip.eeprom.plug();
    EXPECT_EQ("kept", chip.read(0, 4));
}

TEST(W1EepromTest, ComesOffTheBusAfterSoManyAccessesForSoManyMore) {
    Chip chip;
    chip.eeprom.faults().unplugged = FaultSchedule(2, 1);
    EXPECT_EQ(4U, chip.read(0, 4).size());
    EXPECT_EQ(1U, chip.write(0, "x").count);
    EXPECT_EQ(0U, chip.read(0, 4).size());
    EXPECT_EQ(4U, chip.read(0, 4).size());
}

/// The power fails after `programmed` of the eight bytes "abcdefgh", written at 4 over "01234567…".
class TornWrite : public testing::TestWithParam<std::size_t> {};

TEST_P(TornWrite, LeavesNewBytesBeforeTheTearAndOldOnesBehind) {
    Chip chip;
    const std::string old = "0123456789ABCDEF";
    chip.write(0, old);
    chip.eeprom.tearWrites(FaultSchedule(0, 1), GetParam());
    EXPECT_EQ(std::errc::io_error, chip.write(4, "abcdefgh").error);
    EXPECT_EQ("0123" + std::string("abcdefgh").substr(0, GetParam()) + old.substr(4 + GetParam()),
              chip.read(0, 16));
    EXPECT_EQ(8U, chip.write(4, "abcdefgh").count);
    EXPECT_EQ("0123abcdefghCDEF", chip.read(0, 16));
}

INSTANTIATE_TEST_SUITE_P(EveryByte, TornWrite, testing::Range<std::size_t>(0, 8));

TEST(W1EepromTest, AWriteThatIsOverBeforeThePowerFailsIsSound) {
    Chip chip;
    chip.eeprom.tearWrites(FaultSchedule(), 6);
    EXPECT_EQ(6U, chip.write(0, "abcdef").count);
    EXPECT_EQ(std::errc::io_error, chip.write(0, "ghijklm").error);
    EXPECT_EQ(std::string("ghijkl\0", 7), chip.read(0, 7));
}

TEST(W1EepromTest, ATearMayComeInALaterWrite) {
    Chip chip;
    chip.eeprom.tearWrites(FaultSchedule(1), 2);
    EXPECT_EQ(4U, chip.write(0, "abcd").count);
    EXPECT_EQ(std::errc::io_error, chip.write(4, "efgh").error);
    EXPECT_EQ(std::string("abcdef\0\0", 8), chip.read(0, 8));
}

TEST(W1EepromMemoryTest, AWriteProtectedPageStaysWhatItIs) {
    Chip chip;
    chip.write(32, "original");
    ASSERT_TRUE(chip.program(16, std::string("\0\x55\0\0\0\x55\0\0", 8)));
    EXPECT_EQ(std::errc::io_error, chip.write(32, "changed!").error);
    EXPECT_EQ("original", chip.read(32, 8));
    EXPECT_EQ(8U, chip.write(32, "original").count);
    EXPECT_EQ(8U, chip.write(64, "free yet").count);
}

TEST(W1EepromMemoryTest, APageInEpromModeOnlyLosesBits) {
    Chip chip;
    chip.write(0, "\x0F\x0F\x0F\x0F\x0F\x0F\x0F\x0F");
    ASSERT_TRUE(chip.program(16, std::string("\xAA\0\0\0\0\x55\0\0", 8)));
    EXPECT_EQ(1U, chip.write(0, "\x05").count);
    EXPECT_EQ(std::errc::io_error, chip.write(0, "\x1F").error);
    EXPECT_EQ("\x05", chip.read(0, 1));
}

TEST(W1EepromMemoryTest, AProtectionCodeCannotBeTakenBack) {
    Chip chip;
    ASSERT_TRUE(chip.program(16, std::string("\x55\0\0\0\0\x55\0\0", 8)));
    EXPECT_FALSE(chip.program(16, std::string("\0\0\0\0\0\x55\0\0", 8)));
    EXPECT_EQ("\x55", chip.stored(0x80, 1));
}

TEST(W1EepromMemoryTest, CopyProtectionClosesTheRegisterRow) {
    Chip chip;
    ASSERT_TRUE(chip.program(16, std::string("\0\0\0\0\x55\x55\0\0", 8)));
    EXPECT_FALSE(chip.program(16, std::string("\x55\0\0\0\x55\x55\0\0", 8)));
    EXPECT_EQ(8U, chip.write(0, "as ever!").count);
}

TEST(W1EepromMemoryTest, TheFactoryByteAndTheReservedRowAreReadOnly) {
    Chip chip;
    EXPECT_FALSE(chip.program(16, std::string("\0\0\0\0\0\xAA\0\0", 8)));
    EXPECT_TRUE(chip.program(16, std::string("\0\0\0\0\0\x55\x12\x34", 8)));
    EXPECT_EQ("\x12\x34", chip.stored(0x86, 2));
    EXPECT_FALSE(chip.program(17, "reserved"));
}

}  // namespace
