#include "Tools/boardsim/Host/EepromFile.h"

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <vector>

#include "Tools/boardsim/Models/I2cEeprom.h"

namespace {

using boardsim::EepromGeometry;
using boardsim::EepromPlace;
using boardsim::FaultSchedule;
using boardsim::FileCalls;
using boardsim::I2cBus;
using boardsim::I2cEeprom;
using boardsim::Transfer;

constexpr std::uint8_t kAddress = 0x50;

class EepromFileTest : public testing::Test {
protected:
    EepromFileTest() {
        bus.attach(kAddress, chip);
        bus.listen([this](const boardsim::I2cEvent& event) {
            if (event.error == std::errc{}) {
                ++transfers;
            }
        });
    }

    std::string read(std::uint64_t offset, std::size_t count) {
        std::string bytes(count, '\0');
        const Transfer done = file.read(offset, std::as_writable_bytes(std::span(bytes)));
        return done.error == std::errc{} ? bytes.substr(0, done.count) : "failed";
    }
    Transfer write(std::uint64_t offset, const std::string& bytes) {
        return file.write(offset, std::as_bytes(std::span(bytes)));
    }

    I2cBus bus;
    I2cEeprom chip{EepromGeometry{1024, 16, 2}};
    FileCalls file = boardsim::eepromFile("/eeprom", bus, EepromPlace{kAddress, 1024, 16, 2}).open();
    int transfers = 0;
};

TEST_F(EepromFileTest, IsTheMemoryByteForByte) {
    chip.fill("identity");
    EXPECT_EQ("entity", read(2, 6));
    EXPECT_EQ(std::string(3, '\xFF'), read(1021, 10)) << "up to its end";
    EXPECT_EQ("", read(1024, 10));
    EXPECT_EQ("", read(~std::uint64_t{0}, 10));
}

TEST_F(EepromFileTest, IsReadInPieces) {
    chip.fill(std::string(1024, 'x'));
    EXPECT_EQ(std::string(1024, 'x'), read(0, 2000));
    EXPECT_EQ(8, transfers);
}

TEST_F(EepromFileTest, IsWrittenPageByPageAsFastAsTheChipTakesIt) {
    const std::string text = "0123456789abcdefghijklmnopqrstuvwxyz";
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(text.size(), write(10, text).count);
    EXPECT_EQ(3, transfers);
    EXPECT_GE(std::chrono::steady_clock::now() - before, 2 * I2cEeprom::kWriteCycle);
    EXPECT_EQ("\xFF" + text + "\xFF", read(9, text.size() + 2));
}

TEST_F(EepromFileTest, WhatReachesBeyondTheEndIsCut) {
    EXPECT_EQ(4U, write(1020, "abcdefgh").count);
    EXPECT_EQ(std::errc::file_too_large, write(1024, "a").error);
    EXPECT_EQ("abcd", read(1020, 8));
}

TEST_F(EepromFileTest, AChipThatDoesNotAnswerTimesOut) {
    bus.addFault(kAddress, {FaultSchedule(), std::errc::no_such_device_or_address});
    std::array<std::byte, 1> byte{};
    EXPECT_EQ(std::errc::timed_out, file.read(0, byte).error);
    EXPECT_EQ(std::errc::timed_out, file.write(0, byte).error);
}

TEST_F(EepromFileTest, AMissedAnswerDoesNotMatter) {
    chip.fill("a");
    bus.addFault(kAddress, {FaultSchedule(0, 1), std::errc::no_such_device_or_address});
    EXPECT_EQ("a", read(0, 1));
}

}  // namespace
