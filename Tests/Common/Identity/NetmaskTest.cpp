#include "Vl/Common/Identity/Netmask.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

using Valen::getNetmaskBitsFromIp;
using Valen::getNetmaskBitsFromString;
using Valen::getNetmaskIntMask;
using Valen::getNetmaskString;
using Valen::separateSwitchIPAndMask;
using Valen::SimpleIp;

TEST(NetmaskTest, BitsAreTheLeadingOnesInNetworkOrder) {
    EXPECT_EQ(0, getNetmaskBitsFromIp(SimpleIp("0.0.0.0")));
    EXPECT_EQ(1, getNetmaskBitsFromIp(SimpleIp("128.0.0.0")));
    EXPECT_EQ(8, getNetmaskBitsFromIp(SimpleIp("255.0.0.0")));
    EXPECT_EQ(23, getNetmaskBitsFromIp(SimpleIp("255.255.254.0")));
    EXPECT_EQ(24, getNetmaskBitsFromIp(SimpleIp("255.255.255.0")));
    EXPECT_EQ(31, getNetmaskBitsFromIp(SimpleIp("255.255.255.254")));
    EXPECT_EQ(32, getNetmaskBitsFromIp(SimpleIp("255.255.255.255")));
}

TEST(NetmaskTest, OnesBehindTheFirstZeroDoNotCount) {
    EXPECT_EQ(8, getNetmaskBitsFromIp(SimpleIp("255.0.255.0")));
    EXPECT_EQ(0, getNetmaskBitsFromIp(SimpleIp("127.255.255.255")));
}

TEST(NetmaskTest, TheNumberHasItsOnesInFront) {
    EXPECT_EQ(0x80000000U, getNetmaskIntMask(1));
    EXPECT_EQ(0xFF000000U, getNetmaskIntMask(8));
    EXPECT_EQ(0xFFFFFF00U, getNetmaskIntMask(24));
    EXPECT_EQ(0xFFFFFFFEU, getNetmaskIntMask(31));
    EXPECT_EQ(0xFFFFFFFFU, getNetmaskIntMask(32));
}

TEST(NetmaskTest, ZeroBitsGiveAllOnesOnPurpose) {
    EXPECT_EQ(0xFFFFFFFFU, getNetmaskIntMask(0));
}

TEST(NetmaskTest, OtherNumbersOfBitsCountModuloThirtyTwo) {
    EXPECT_EQ(0x80000000U, getNetmaskIntMask(33));
    EXPECT_EQ(0xFFFFFFFFU, getNetmaskIntMask(64));
    EXPECT_EQ(0xFFFFFFFEU, getNetmaskIntMask(-1));
    EXPECT_EQ(0xFFFFFFFEU, getNetmaskIntMask(INT_MAX));
    EXPECT_EQ(0xFFFFFFFFU, getNetmaskIntMask(INT_MIN));
}

TEST(NetmaskTest, EveryPrefixLengthGoesToTextAndBack) {
    for (int bits = 0; bits <= 32; ++bits) {
        const auto text = getNetmaskString(bits);
        EXPECT_EQ(bits, getNetmaskBitsFromIp(SimpleIp(text.c_str()))) << text.c_str();
        EXPECT_EQ(bits, getNetmaskBitsFromString(text.c_str())) << text.c_str();
    }
    EXPECT_STREQ("0.0.0.0", getNetmaskString(0).c_str());
    EXPECT_STREQ("255.255.240.0", getNetmaskString(20).c_str());
    EXPECT_STREQ("255.255.255.255", getNetmaskString(32).c_str());
}

TEST(NetmaskTest, ThereIsNoTextOutsideZeroToThirtyTwo) {
    for (const int bits : {-1, 33, INT_MIN, INT_MAX}) {
        EXPECT_STREQ("", getNetmaskString(bits).c_str()) << bits;
    }
}

TEST(NetmaskTest, ATextThatIsNoMaskHasNoPrefixLength) {
    for (const char* text : {"", "24", "255.255.255", "255.255.255.0 ", "255.0.255.0", "0.0.0.1", "256.0.0.0",
                             "255.255.255.0/24", "mask"}) {
        EXPECT_EQ(-1, getNetmaskBitsFromString(text)) << text;
    }
    EXPECT_EQ(-1, getNetmaskBitsFromString(nullptr));
}

struct Row {
    const char* text;
    const char* ip;
    const char* mask;
};

class SeparateTest : public testing::TestWithParam<Row> {};

TEST_P(SeparateTest, AddressAndMaskAreTakenApart) {
    SimpleIp ip;
    SimpleIp mask;
    EXPECT_TRUE(separateSwitchIPAndMask(GetParam().text, ip, mask)) << GetParam().text;
    EXPECT_STREQ(GetParam().ip, SimpleIp::CharString(ip)) << GetParam().text;
    EXPECT_STREQ(GetParam().mask, SimpleIp::CharString(mask)) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Texts, SeparateTest,
                         testing::Values(Row{"10.0.0.1/24", "10.0.0.1", "255.255.255.0"},
                                         Row{"10.0.0.1/255.255.254.0", "10.0.0.1", "255.255.254.0"},
                                         Row{"10.0.0.1/0", "10.0.0.1", "0.0.0.0"},
                                         Row{"10.0.0.1/0.0.0.0", "10.0.0.1", "0.0.0.0"},
                                         Row{"10.0.0.1/32", "10.0.0.1", "255.255.255.255"},
                                         Row{"255.255.255.255/1", "255.255.255.255", "128.0.0.0"}));

TEST(NetmaskTest, ATextThatCannotBeTakenApartChangesNothing) {
    for (const char* text :
         {"", "/", "10.0.0.1", "10.0.0.1/", "/24", "10.0.0.1/33", "10.0.0.1/-1", "10.0.0.1/-0", "10.0.0.1/+8",
          "10.0.0.1/24 ", "10.0.0.1/24/24", "10.0.0.1/255.0.255.0", "10.0.0.256/24", "10.0.0.1 /24",
          "10.0.0/24", "10.0.0.1/4294967320", "10.0.0.1/99999999999999999999", "10.0.0.1/x"}) {
        SimpleIp ip("1.2.3.4");
        SimpleIp mask("5.6.7.8");
        EXPECT_FALSE(separateSwitchIPAndMask(text, ip, mask)) << text;
        EXPECT_EQ(SimpleIp("1.2.3.4"), ip) << text;
        EXPECT_EQ(SimpleIp("5.6.7.8"), mask) << text;
    }
    SimpleIp ip;
    SimpleIp mask;
    EXPECT_FALSE(separateSwitchIPAndMask(nullptr, ip, mask));
    EXPECT_FALSE(separateSwitchIPAndMask((std::string(100'000, '1') + "/8").c_str(), ip, mask));
}

}  // namespace
