#include "Tools/boardsim/Models/Lm75.h"

#include <gmock/gmock.h>

#include "Tests/boardsim/Models/I2cChip.h"

namespace {

using boardsim::Lm75;
using testing::ElementsAre;

constexpr std::uint8_t kTwelveBits = 0x60;

class Lm75Test : public testing::Test {
protected:
    Lm75 sensor;
    models::I2cChipUser user{sensor};
};

TEST_F(Lm75Test, HasTheDataSheetsValuesAfterPowerOn) {
    EXPECT_THAT(user.read({0}, 2), ElementsAre(0x00, 0x00));
    EXPECT_THAT(user.read({1}, 1), ElementsAre(0x00));
    EXPECT_THAT(user.read({2}, 2), ElementsAre(0x4B, 0x00));
    EXPECT_THAT(user.read({3}, 2), ElementsAre(0x50, 0x00));
}

struct TemperatureRow {
    int sixteenths;
    std::uint8_t high;
    std::uint8_t low;
};

TEST_F(Lm75Test, GivesTwelveBitsLeftAlignedHighByteFirst) {
    user.write({1, kTwelveBits});
    const TemperatureRow rows[] = {
        {0, 0x00, 0x00},     {25 * 16, 0x19, 0x00},  {1, 0x00, 0x10},        {-1, 0xFF, 0xF0},
        {-391, 0xE7, 0x90},  {-25 * 16, 0xE7, 0x00}, {127 * 16, 0x7F, 0x00}, {2047, 0x7F, 0xF0},
        {-2048, 0x80, 0x00}, {5000, 0x7F, 0xF0},     {-5000, 0x80, 0x00},
    };
    for (const TemperatureRow& row : rows) {
        sensor.feel(row.sixteenths);
        EXPECT_THAT(user.read({0}, 2), ElementsAre(row.high, row.low)) << row.sixteenths;
    }
}

TEST_F(Lm75Test, GivesAsManyBitsAsConfigured) {
    sensor.feel(0x19F);
    const std::uint8_t low[] = {0x80, 0xC0, 0xE0, 0xF0};
    for (std::uint8_t resolution = 0; resolution < 4; ++resolution) {
        user.write({1, static_cast<std::uint8_t>(resolution << 5)});
        EXPECT_THAT(user.read({0}, 2), ElementsAre(0x19, low[resolution]));
    }
}

TEST_F(Lm75Test, ThePointerStaysAndARegisterRepeats) {
    sensor.feel(25 * 16);
    user.write({1, kTwelveBits});
    user.write({0});
    EXPECT_THAT(user.read(2), ElementsAre(0x19, 0x00));
    EXPECT_THAT(user.read(5), ElementsAre(0x19, 0x00, 0x19, 0x00, 0x19));
    EXPECT_THAT(user.read({1}, 2), ElementsAre(kTwelveBits, kTwelveBits));
}

TEST_F(Lm75Test, LimitsAreTwoBytes) {
    EXPECT_TRUE(user.write({3, 0x55, 0x80}));
    EXPECT_TRUE(user.write({2, 0x44}));
    EXPECT_THAT(user.read({3}, 2), ElementsAre(0x55, 0x80));
    EXPECT_THAT(user.read({2}, 2), ElementsAre(0x44, 0x00));
}

TEST_F(Lm75Test, ShutDownItKeepsTheLastTemperatureUntilAOneShot) {
    sensor.feel(25 * 16);
    user.write({1, 0x61});
    sensor.feel(30 * 16);
    EXPECT_THAT(user.read({0}, 2), ElementsAre(0x19, 0x00));
    user.write({1, 0xE1});
    EXPECT_THAT(user.read({0}, 2), ElementsAre(0x1E, 0x00));
    EXPECT_THAT(user.read({1}, 1), ElementsAre(0x61)) << "the one-shot bit reads as 0";
    sensor.feel(31 * 16);
    user.write({1, 0x60});
    EXPECT_THAT(user.read({0}, 2), ElementsAre(0x1F, 0x00));
}

TEST_F(Lm75Test, RefusesWhatItDoesNotHave) {
    EXPECT_FALSE(user.write({4}));
    EXPECT_FALSE(user.write({0, 1}));
    EXPECT_FALSE(user.write({1, 0x60, 0x60}));
    EXPECT_FALSE(user.write({2, 1, 2, 3}));
    EXPECT_THAT(user.read({1}, 1), ElementsAre(0x60));
}

TEST_F(Lm75Test, ForgetsItsSettingsWhenPowerIsLost) {
    sensor.feel(0x19F);
    user.write({1, kTwelveBits});
    user.write({3, 1, 2});
    sensor.losePower();
    EXPECT_THAT(user.read(2), ElementsAre(0x19, 0x80)) << "nine bits again";
    EXPECT_THAT(user.read({3}, 2), ElementsAre(0x50, 0x00));
}

}  // namespace
