#include "Vl/Common/Identity/AddressParts.h"

#include <gtest/gtest.h>

namespace {

using Valen::MACAddress;
using Valen::SimpleIp;

struct Row {
    const char* group;
    const char* expected;
};

class MulticastMacTest : public testing::TestWithParam<Row> {};

TEST_P(MulticastMacTest, HoldsTheLowTwentyThreeBitsOfTheGroup) {
    const MACAddress mac = Valen::multicastIp2Mac(SimpleIp(GetParam().group));
    EXPECT_STREQ(GetParam().expected, mac.toString()) << GetParam().group;
}

INSTANTIATE_TEST_SUITE_P(
    Groups, MulticastMacTest,
    testing::Values(Row{"239.255.1.2", "01:00:5E:7F:01:02"}, Row{"224.128.0.1", "01:00:5E:00:00:01"},
                    Row{"224.0.0.251", "01:00:5E:00:00:FB"}, Row{"239.129.254.253", "01:00:5E:01:FE:FD"},
                    Row{"255.255.255.255", "01:00:5E:7F:FF:FF"}, Row{"0.0.0.0", "01:00:5E:00:00:00"}));

TEST(AddressPartsTest, TheLowerFourBytesAreABigEndianNumber) {
    EXPECT_EQ(0x5E010203U, Valen::getMacLower4Bytes(MACAddress("02:00:5e:01:02:03")));
    EXPECT_EQ(0xFEDCBA98U, Valen::getMacLower4Bytes(MACAddress("00:00:fe:dc:ba:98")));
    EXPECT_EQ(0U, Valen::getMacLower4Bytes(MACAddress("ff:ff:00:00:00:00")));
}

TEST(AddressPartsTest, TheHigherTwoBytesAreABigEndianNumber) {
    EXPECT_EQ(0x0200U, Valen::getMacHigher2Bytes(MACAddress("02:00:5e:01:02:03")));
    EXPECT_EQ(0xFEDCU, Valen::getMacHigher2Bytes(MACAddress("fe:dc:00:00:00:00")));
    EXPECT_EQ(0U, Valen::getMacHigher2Bytes(MACAddress("00:00:ff:ff:ff:ff")));
}

}  // namespace
