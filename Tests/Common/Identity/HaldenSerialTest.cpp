#include "Vl/Common/Identity/HaldenSerial.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "Tests/Common/Identity/CommandOutput.h"

namespace {

using Valen::HaldenSerial;

/// Central European time, summer time included, whatever the machine has.
class HaldenSerialTest : public testing::Test {
protected:
    HaldenSerialTest() {
        if (const char* zone = std::getenv("TZ")) {
            hadZone = true;
            previousZone = zone;
        }
        setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
        tzset();
    }
    ~HaldenSerialTest() override {
        if (hadZone) {
            setenv("TZ", previousZone.c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

    bool hadZone = false;
    std::string previousZone;
};

TEST_F(HaldenSerialTest, NumberZeroIsInvalidAlthoughItsDigitSumIsZero) {
    EXPECT_FALSE(HaldenSerial().IsValid());
    EXPECT_EQ(0U, HaldenSerial().checkDigit());
}

TEST_F(HaldenSerialTest, AnArticleNumberIsValidAndAWrongLastDigitGivesTheRightOne) {
    const HaldenSerial good{4006381333931, 0, 0};
    EXPECT_TRUE(good.IsValid());
    EXPECT_EQ(1U, good.checkDigit());
    const HaldenSerial bad{4006381333930, 0, 0};
    EXPECT_FALSE(bad.IsValid());
    EXPECT_EQ(1U, bad.checkDigit());
}

TEST_F(HaldenSerialTest, TheRecordIsSixteenLittleEndianBytes) {
    const unsigned char record[16] = {0x2B, 0xE2, 0x8D, 0xCB, 0xA4, 0x03, 0x00, 0x00,
                                      0x04, 0x03, 0x02, 0x01, 0xFF, 0xFF, 0xFF, 0xFF};
    HaldenSerial serial;
    ASSERT_EQ(sizeof record, sizeof serial);
    std::memcpy(&serial, record, sizeof record);
    EXPECT_EQ(0x3A4CB8DE22BU, serial.number);
    EXPECT_EQ(0x01020304, serial.productionDate);
    EXPECT_EQ(-1, serial.lastServiceDate);
}

TEST_F(HaldenSerialTest, IsWrittenWithBothDatesInLocalTime) {
    const HaldenSerial serial{4006381333931, 1'715'926'150, 0};
    EXPECT_STREQ(
        "4006381333931  Production Date: 17.05.2024 08:09:10  Last Service Date: 01.01.1970 01:00:00",
        serial.toString().c_str());
}

TEST_F(HaldenSerialTest, AShortNumberIsFilledWithZerosToThirteenDigits) {
    const std::string text = HaldenSerial{17, 0, 0}.toString().c_str();
    EXPECT_EQ("0000000000017  Production", text.substr(0, 25));
}

TEST_F(HaldenSerialTest, ALongNumberKeepsAllItsDigits) {
    const std::string text = HaldenSerial{0xFFFFFFFFFFFFFFFF, 0, 0}.toString().c_str();
    EXPECT_EQ("18446744073709551615  Production", text.substr(0, 32));
}

TEST_F(HaldenSerialTest, DatesAreThoseOfTheDateCommand) {
    for (const std::int32_t seconds : {0, 1, 951'782'400, 1'711'846'799, 1'711'846'800, 1'729'990'800,
                                       2'147'483'647, -1, -2'147'483'647 - 1}) {
        const std::string expected =
            outputOf("date -d @" + std::to_string(seconds) + " '+%d.%m.%Y %H:%M:%S'");
        std::string text = "whatever was there before";
        HaldenSerial{1, seconds, 5}.PD_ToString(text);
        EXPECT_EQ(expected, text + '\n') << seconds;
        HaldenSerial{1, 5, seconds}.SD_ToString(text);
        EXPECT_EQ(expected, text + '\n') << seconds;
    }
}

}  // namespace
