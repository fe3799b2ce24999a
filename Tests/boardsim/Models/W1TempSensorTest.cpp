#include "Tools/boardsim/Models/W1TempSensor.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using boardsim::FaultSchedule;
using boardsim::FileAnswer;
using boardsim::W1TempSensor;

std::int32_t temperature(W1TempSensor& sensor) {
    std::int32_t value = 0;
    const FileAnswer answer = sensor.readTemperature(0, std::as_writable_bytes(std::span(&value, 1)));
    EXPECT_EQ(4U, answer.count);
    return value;
}

TEST(W1TempSensorTest, ReadsEightyFiveDegreesAfterPowerOn) {
    W1TempSensor sensor(7);
    EXPECT_EQ(0x0550, temperature(sensor));
    EXPECT_EQ("22-000000000007", sensor.id().name());
}

struct Reading {
    std::int32_t surroundings;
    std::int32_t expected;
};

class W1TempReading : public testing::TestWithParam<Reading> {};

TEST_P(W1TempReading, IsTheTemperatureCutToTheRange) {
    W1TempSensor sensor(7);
    sensor.setTemperature(GetParam().surroundings);
    EXPECT_EQ(GetParam().expected, temperature(sensor));
}

// The relationship of data and temperature in the data sheet, and what lies beyond.
INSTANTIATE_TEST_SUITE_P(Values, W1TempReading,
                         testing::Values(Reading{2000, 0x07D0}, Reading{2001, 2000}, Reading{0x0191, 0x0191},
                                         Reading{0, 0}, Reading{-8, -8}, Reading{-0x0370, -880},
                                         Reading{-881, -880}));

TEST(W1TempSensorTest, AWrongCrcReadsAsAllOnesOnce) {
    W1TempSensor sensor(7);
    sensor.setTemperature(25 * 16);
    sensor.faults().crcErrors = FaultSchedule(0, 1);
    EXPECT_EQ(-1, temperature(sensor));
    EXPECT_EQ(400, temperature(sensor));
}

TEST(W1TempSensorTest, ShortReadsGiveHalfOfWhatThereIs) {
    W1TempSensor sensor(7);
    sensor.faults().shortReads = FaultSchedule(0, 1);
    std::array<std::byte, 64> bytes{};
    EXPECT_EQ(2U, sensor.readTemperature(0, bytes).count);
    EXPECT_EQ(4U, sensor.readTemperature(0, bytes).count);
    EXPECT_EQ(1U, sensor.readTemperature(3, bytes).count);
    EXPECT_EQ(0U, sensor.readTemperature(4, bytes).count);
}

TEST(W1TempSensorTest, UserDataAreTwoBytesThatCanBeWritten) {
    W1TempSensor sensor(7);
    sensor.setUserData(0x1234);
    std::array<std::byte, 8> bytes{};
    EXPECT_EQ(2U, sensor.readUserData(0, bytes).count);
    EXPECT_EQ(std::byte{0x34}, bytes[0]);
    EXPECT_EQ(std::byte{0x12}, bytes[1]);
    const std::array<std::byte, 3> written{std::byte{1}, std::byte{2}, std::byte{3}};
    EXPECT_EQ(1U, sensor.writeUserData(1, written).count);
    EXPECT_EQ(std::errc::file_too_large, sensor.writeUserData(2, written).error);
    EXPECT_EQ(1U, sensor.readUserData(1, bytes).count);
    EXPECT_EQ(std::byte{1}, bytes[0]);
}

TEST(W1TempSensorTest, OffTheBusEveryAccessFails) {
    W1TempSensor sensor(7);
    sensor.unplug();
    std::array<std::byte, 4> bytes{};
    EXPECT_EQ(std::errc::io_error, sensor.readTemperature(0, bytes).error);
    EXPECT_EQ(std::errc::io_error, sensor.readUserData(0, bytes).error);
    EXPECT_EQ(std::errc::io_error, sensor.writeUserData(0, std::span<const std::byte>(bytes).first(1)).error);
}

}  // namespace
