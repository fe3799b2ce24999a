#include "Tools/boardsim/Models/IdentityRom.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using boardsim::FaultSchedule;
using boardsim::FileAnswer;
using boardsim::IdentityRom;

class IdentityRomTest : public testing::Test {
protected:
    FileAnswer read(std::uint64_t offset, std::size_t count) {
        bytes.assign(count, std::byte{0xEE});
        return rom.read(offset, bytes);
    }
    FileAnswer write(std::uint64_t offset, std::size_t count) {
        return rom.write(offset, std::vector<std::byte>(count, std::byte{0x5A}));
    }

    static constexpr std::array<std::uint8_t, 4> kContents{1, 2, 3, 4};
    IdentityRom rom{kContents};
    std::vector<std::byte> bytes;
};

TEST_F(IdentityRomTest, HoldsItsContentsAndIsErasedBehindThem) {
    EXPECT_EQ(6U, read(0, 6).count);
    EXPECT_EQ((std::vector{std::byte{1}, std::byte{2}, std::byte{3}, std::byte{4}, std::byte{0xFF},
                           std::byte{0xFF}}),
              bytes);
}

TEST_F(IdentityRomTest, ReadingEndsAtItsEnd) {
    EXPECT_EQ(2U, read(0xFFFE, 10).count);
    EXPECT_EQ(std::byte{0xEE}, bytes[2]);
    EXPECT_EQ(0U, read(0x10000, 10).count);
    EXPECT_EQ(0U, read(~0ULL, 10).count);
}

TEST_F(IdentityRomTest, WritingBehindItsEndIsRefused) {
    EXPECT_EQ(2U, write(0xFFFE, 10).count);
    EXPECT_EQ(std::byte{0x5A}, rom.at(0xFFFF));
    EXPECT_EQ(std::errc::no_space_on_device, write(0x10000, 1).error);
    EXPECT_EQ(std::errc::no_space_on_device, write(~0ULL, 1).error);
    EXPECT_EQ(std::errc{}, write(0x10000, 0).error);
}

TEST_F(IdentityRomTest, ContentsThatDoNotFitAreCut) {
    const std::vector<std::uint8_t> tooMuch(0x10001, 7);
    EXPECT_EQ(std::byte{7}, IdentityRom(tooMuch).at(0xFFFF));
}

TEST_F(IdentityRomTest, FailsOnDemand) {
    rom.faults().failures = FaultSchedule(1, 1);
    EXPECT_EQ(std::errc{}, read(0, 4).error);
    EXPECT_EQ(std::errc::io_error, write(0, 4).error);
    EXPECT_EQ(std::errc{}, read(0, 4).error);
    EXPECT_EQ(std::byte{1}, rom.at(0));
}

TEST_F(IdentityRomTest, MovesHalfOnDemandButASingleByteWhole) {
    rom.faults().shortReads = FaultSchedule();
    rom.faults().shortWrites = FaultSchedule();
    EXPECT_EQ(28U, read(0, 56).count);
    EXPECT_EQ(1U, read(0, 1).count);
    EXPECT_EQ(6U, write(28, 12).count);
    EXPECT_EQ(std::byte{0xFF}, rom.at(34));
}

TEST_F(IdentityRomTest, OneByteComesInvertedOnDemand) {
    rom.faults().corruption = FaultSchedule(0, 1);
    rom.faults().corrupt = 2;
    read(0, 2);
    EXPECT_EQ(std::byte{2}, bytes[1]) << "does not reach it, and does not count";
    read(1, 2);
    EXPECT_EQ(std::byte{0xFC}, bytes[1]);
    read(1, 2);
    EXPECT_EQ(std::byte{3}, bytes[1]);
}

}  // namespace
