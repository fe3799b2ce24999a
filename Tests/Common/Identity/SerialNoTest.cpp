#include "Vl/Common/Identity/SerialNo.h"

#include <gtest/gtest.h>

namespace {

using Valen::SerialNo;

TEST(SerialNoTest, ANewOneIsNoSerial) {
    EXPECT_FALSE(SerialNo().IsValid());
    EXPECT_STREQ("0000000000000000", SerialNo().toString().c_str());
}

TEST(SerialNoTest, IsWrittenAsSixteenUpperCaseDigits) {
    const SerialNo serial{0x22000000054A1D2E};
    EXPECT_TRUE(serial.IsValid());
    EXPECT_STREQ("22000000054A1D2E", serial.toString().c_str());
    EXPECT_STREQ("FFFFFFFFFFFFFFFF", SerialNo{0xFFFFFFFFFFFFFFFF}.toString().c_str());
}

TEST(SerialNoTest, ComparesAsANumber) {
    EXPECT_EQ(SerialNo{5}, SerialNo{5});
    EXPECT_LT(SerialNo{5}, SerialNo{0x8000000000000000});
}

}  // namespace
