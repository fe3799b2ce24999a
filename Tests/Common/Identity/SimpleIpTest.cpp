#include "Vl/Common/Identity/SimpleIp.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <random>
#include <string>

namespace {

using Valen::SimpleIp;

/// The four octets as they lie in memory.
std::array<int, 4> octets(SimpleIp ip) {
    unsigned char bytes[4];
    const std::uint32_t address = ip.networkOrder();
    std::memcpy(bytes, &address, sizeof bytes);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

using Octets = std::array<int, 4>;
constexpr Octets kInvalid = {255, 255, 255, 255};

TEST(SimpleIpTest, IsFourBytesInNetworkOrder) {
    EXPECT_EQ(4U, sizeof(SimpleIp));
    const SimpleIp ip("10.20.30.40");
    EXPECT_EQ((Octets{10, 20, 30, 40}), octets(ip));
    EXPECT_EQ(0x0A141E28U, ip.hostOrder());
    EXPECT_TRUE(ip.isValid());
}

TEST(SimpleIpTest, ANewAddressIsTheInvalidOne) {
    EXPECT_EQ(kInvalid, octets(SimpleIp()));
    EXPECT_FALSE(SimpleIp().isValid());
}

struct Row {
    const char* text;
    Octets expected;
};

class SimpleIpTextTest : public testing::TestWithParam<Row> {};

TEST_P(SimpleIpTextTest, IsReadAsScanfReadsIt) {
    EXPECT_EQ(GetParam().expected, octets(SimpleIp(GetParam().text))) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Addresses, SimpleIpTextTest,
                         testing::Values(Row{"0.0.0.0", {0, 0, 0, 0}}, Row{"1.2.3.4", {1, 2, 3, 4}},
                                         Row{"255.255.255.255", kInvalid},
                                         Row{"001.010.0.9", {1, 10, 0, 9}}));
INSTANTIATE_TEST_SUITE_P(NumbersAbove255WrapOnPurpose, SimpleIpTextTest,
                         testing::Values(Row{"256.257.300.511", {0, 1, 44, 255}},
                                         Row{"-1.0.0.0", {255, 0, 0, 0}}));
INSTANTIATE_TEST_SUITE_P(WhatFollowsTheFourthNumberIsIgnoredOnPurpose, SimpleIpTextTest,
                         testing::Values(Row{"1.2.3.4/24", {1, 2, 3, 4}}, Row{"1.2.3.4.5", {1, 2, 3, 4}},
                                         Row{"1.2.3.4 and more", {1, 2, 3, 4}},
                                         Row{" 1. 2. 3. 4", {1, 2, 3, 4}}));
INSTANTIATE_TEST_SUITE_P(AnythingElseIsInvalid, SimpleIpTextTest,
                         testing::Values(Row{"", kInvalid}, Row{nullptr, kInvalid}, Row{"1", kInvalid},
                                         Row{"1.2.3", kInvalid}, Row{"1.2.3.", kInvalid},
                                         Row{"1,2,3,4", kInvalid}, Row{"1 .2.3.4", kInvalid},
                                         Row{"a.b.c.d", kInvalid}, Row{"::1", kInvalid},
                                         Row{"localhost", kInvalid}, Row{"1.2.3.x", kInvalid}));

TEST(SimpleIpTest, ANumberOfAnyLengthIsReadToItsEnd) {
    const SimpleIp ip((std::string(5000, '0') + "7.1.2.3").c_str());
    EXPECT_EQ((Octets{7, 1, 2, 3}), octets(ip));
}

TEST(SimpleIpTest, ReadsAndWritesWhatTheSystemReadsAndWrites) {
    std::mt19937 random(4);
    for (int i = 0; i < 1000; ++i) {
        const auto address = static_cast<std::uint32_t>(random());
        char text[INET_ADDRSTRLEN];
        ASSERT_NE(nullptr, inet_ntop(AF_INET, &address, text, sizeof text));
        EXPECT_STREQ(text, SimpleIp::CharString(SimpleIp::fromNetworkOrder(address)).c_str());
        EXPECT_EQ(address, SimpleIp(text).networkOrder()) << text;
    }
}

TEST(SimpleIpTest, TheTextIsItsOwnBuffer) {
    const SimpleIp::CharString longest(SimpleIp("255.255.255.254"));
    const SimpleIp::CharString shortest(SimpleIp("0.0.0.0"));
    EXPECT_STREQ("255.255.255.254", longest);
    EXPECT_STREQ("0.0.0.0", shortest);
    EXPECT_EQ(16U, sizeof longest);
    const SimpleIp::CharString copy = longest;
    EXPECT_NE(longest.c_str(), copy.c_str());
    EXPECT_STREQ(longest, copy);
}

TEST(SimpleIpTest, AddressesCompareAndComeFromNumbers) {
    EXPECT_EQ(SimpleIp("1.2.3.4"), SimpleIp::fromHostOrder(0x01020304));
    EXPECT_EQ(SimpleIp("1.2.3.4"), SimpleIp::fromNetworkOrder(htonl(0x01020304)));
    EXPECT_NE(SimpleIp("1.2.3.4"), SimpleIp("1.2.3.5"));
}

}  // namespace
