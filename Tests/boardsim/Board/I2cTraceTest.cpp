#include "Tools/boardsim/Board/I2cTrace.h"

#include <gtest/gtest.h>

namespace {

using boardsim::describe;
using boardsim::I2cDirection;
using boardsim::I2cMessage;

std::string line(std::vector<I2cMessage> messages, std::errc error = {}) {
    return describe("i2c-1", {messages, error});
}

TEST(I2cTraceTest, HasBusAddressDirectionsAndBytes) {
    EXPECT_EQ("i2c-1 0x48 write 0x01 0x60", line({{0x48, I2cDirection::Write, {1, 0x60}}}));
    EXPECT_EQ("i2c-1 0x48 write 0x00, read 0x19 0x00",
              line({{0x48, I2cDirection::Write, {0}}, {0x48, I2cDirection::Read, {0x19, 0}}}));
}

TEST(I2cTraceTest, AnotherAddressIsNamed) {
    EXPECT_EQ("i2c-1 0x48 write 0x00, 0x49 read 0x07",
              line({{0x48, I2cDirection::Write, {0}}, {0x49, I2cDirection::Read, {7}}}));
}

TEST(I2cTraceTest, AMessageWithoutBytesIsJustItsDirection) {
    EXPECT_EQ("i2c-1 0x05 write", line({{5, I2cDirection::Write}}));
    EXPECT_EQ("i2c-1 0x7f read", line({{0x7F, I2cDirection::Read}}));
}

TEST(I2cTraceTest, AFailureIsSaidAtTheEndAndNothingWasRead) {
    EXPECT_EQ("i2c-1 0x4d write 0x00: No such device or address",
              line({{0x4D, I2cDirection::Write, {0}}}, std::errc::no_such_device_or_address));
    EXPECT_EQ(
        "i2c-1 0x4d write 0x00, read: Connection timed out",
        line({{0x4D, I2cDirection::Write, {0}}, {0x4D, I2cDirection::Read, {0, 0}}}, std::errc::timed_out));
}

TEST(I2cTraceTest, OfManyBytesTheFirstAreShown) {
    const std::vector<std::uint8_t> bytes(20, 0xAA);
    std::string shown;
    for (int i = 0; i < 16; ++i) {
        shown += " 0xaa";
    }
    EXPECT_EQ("i2c-1 0x48 write" + shown + " … 4 more", line({{0x48, I2cDirection::Write, bytes}}));
}

}  // namespace
