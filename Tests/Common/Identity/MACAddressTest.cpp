#include "Vl/Common/Identity/MACAddress.h"

#include <gtest/gtest.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace {

using Valen::MACAddress;
using Bytes = std::array<unsigned char, 6>;

constexpr Bytes kNone = {0, 0, 0, 0, 0, 0};
constexpr Bytes kExample = {0x02, 0x00, 0x5E, 0x01, 0x02, 0x03};

struct Row {
    const char* text;
    Bytes expected;
};

class MACAddressReadTest : public testing::TestWithParam<Row> {};

TEST_P(MACAddressReadTest, IsRead) {
    MACAddress address(Bytes{9, 9, 9, 9, 9, 9});
    EXPECT_TRUE(address.fromString(GetParam().text)) << GetParam().text;
    EXPECT_EQ(GetParam().expected, address.bytes()) << GetParam().text;
    EXPECT_EQ(GetParam().expected, MACAddress(GetParam().text).bytes()) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(WithColons, MACAddressReadTest,
                         testing::Values(Row{"02:00:5e:01:02:03", kExample},
                                         Row{"02:00:5E:01:02:03", kExample}, Row{"2:0:5e:1:2:3", kExample},
                                         Row{"FF:ff:Ff:fF:0:0", {255, 255, 255, 255, 0, 0}},
                                         Row{" 2: 0: 5e: 1: 2: 3", kExample},
                                         Row{"0x2:0x0:0x5e:0x1:0x2:0x3", kExample}));
INSTANTIATE_TEST_SUITE_P(OfALongNumberTheLowEightBitsCountOnPurpose, MACAddressReadTest,
                         testing::Values(Row{"1ff:102:1234:0:0:0", {0xFF, 0x02, 0x34, 0, 0, 0}},
                                         Row{"-1:0:0:0:0:0", {0xFF, 0, 0, 0, 0, 0}},
                                         Row{"ffffffffffffffffffff:0:0:0:0:1", {0xFF, 0, 0, 0, 0, 1}}));
INSTANTIATE_TEST_SUITE_P(TwelveDigits, MACAddressReadTest,
                         testing::Values(Row{"02005E010203", kExample}, Row{"02005e010203", kExample},
                                         Row{"FFFFFFFFFFFE", {255, 255, 255, 255, 255, 254}}));
INSTANTIATE_TEST_SUITE_P(WhatFollowsTwelveDigitsIsIgnoredOnPurpose, MACAddressReadTest,
                         testing::Values(Row{"02005E01020304", kExample}, Row{"02005E010203 eth0", kExample},
                                         Row{"02005E010203:", kExample}, Row{"02005E01023", kExample}));

INSTANTIATE_TEST_SUITE_P(DashesAreSignsToScanfOnPurpose, MACAddressReadTest,
                         testing::Values(Row{"02-00-5e-01-02-03", {0x02, 0x00, 0x00, 0xFB, 0x0E, 0x00}}));

class MACAddressRefusalTest : public testing::TestWithParam<const char*> {};

TEST_P(MACAddressRefusalTest, LeavesNothingButZeros) {
    MACAddress address(Bytes{1, 2, 3, 4, 5, 6});
    EXPECT_FALSE(address.fromString(GetParam()));
    EXPECT_EQ(kNone, address.bytes());
    EXPECT_EQ(kNone, MACAddress(GetParam()).bytes());
}

INSTANTIATE_TEST_SUITE_P(Texts, MACAddressRefusalTest,
                         testing::Values("", nullptr, "hello", "02", "02:00:5e:01:02",
                                         "02:00:5e:01:02:", "02:00:5e:01:02:03:04", "02:00:5e:01:02:03 ",
                                         "02:00:5e:01:02:xx", "02:00-5e:01:02:03", "02005E0102",
                                         "02005E0102x3", ":::::", "02::5e:01:02:03", "g2005E010203"));

TEST(MACAddressTest, ANewAddressIsSixZeroBytes) {
    EXPECT_EQ(6U, sizeof(MACAddress));
    EXPECT_EQ(kNone, MACAddress().bytes());
    EXPECT_NE(MACAddress(kExample), MACAddress());
    EXPECT_EQ(MACAddress(kExample), MACAddress("02:00:5e:01:02:03"));
}

TEST(MACAddressTest, IsWrittenInUpperCaseWithItsSeparator) {
    EXPECT_STREQ("02:00:5E:01:02:03", MACAddress::CharString(kExample.data(), ':'));
    EXPECT_STREQ("02-00-5E-01-02-03", MACAddress::CharString(kExample.data(), '-').c_str());
    EXPECT_STREQ("FE:DC:BA:98:76:54", MACAddress("FEDCBA987654").toString().c_str());
}

TEST(MACAddressTest, IsWrittenWithoutSeparatorWhenThatIsNotPositive) {
    for (const int none : {0, -1, -':'}) {
        EXPECT_STREQ("02005E010203", MACAddress::CharString(kExample.data(), none)) << none;
        EXPECT_STREQ("02005E010203", MACAddress(kExample).toString(none)) << none;
    }
}

TEST(MACAddressTest, EveryByteIsWrittenAsPrintfWritesIt) {
    for (int byte = 0; byte < 256; ++byte) {
        const Bytes bytes = {static_cast<unsigned char>(byte), 0, 0, 0, 0, static_cast<unsigned char>(byte)};
        char expected[18];
        std::snprintf(expected, sizeof expected, "%02X:00:00:00:00:%02X", static_cast<unsigned int>(byte),
                      static_cast<unsigned int>(byte));
        EXPECT_STREQ(expected, MACAddress::CharString(bytes.data(), ':'));
        EXPECT_EQ(bytes, MACAddress(expected).bytes());
    }
}

TEST(MACAddressTest, TheLoopbackInterfaceHasNone) {
    EXPECT_EQ(kNone, MACAddress::fromInterface("lo").bytes());
}

TEST(MACAddressTest, AnInterfaceThatDoesNotExistHasNone) {
    for (const char* name : {"nosuchif0", "", "a name with blanks", "%s%n"}) {
        EXPECT_EQ(kNone, MACAddress::fromInterface(name).bytes()) << name;
    }
    EXPECT_EQ(kNone, MACAddress::fromInterface(nullptr).bytes());
    EXPECT_EQ(kNone, MACAddress::fromInterface(std::string(100'000, 'e').c_str()).bytes());
}

TEST(MACAddressTest, EveryInterfaceOfTheMachineHasTheAddressThatSysfsShows) {
    int interfaces = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/sys/class/net")) {
        std::ifstream file(entry.path() / "address");
        std::string shown;
        if (!(file >> shown) || shown.size() != std::strlen("00:00:00:00:00:00")) {
            continue;  // a tunnel, whose address is of another kind
        }
        const std::string name = entry.path().filename();
        EXPECT_EQ(MACAddress(shown.c_str()), MACAddress::fromInterface(name.c_str())) << name;
        ++interfaces;
    }
    EXPECT_GT(interfaces, 0);
}

/// Runs `body` in a network of its own, which has nothing but a loopback interface that is down. Only the
/// thread that runs it is there.
template <typename Body>
void inPrivateNetwork(Body body) {
    std::thread thread([&body] {
        ASSERT_EQ(0, unshare(CLONE_NEWNET)) << std::strerror(errno);
        body();
    });
    thread.join();
}

/// Gives the loopback interface an address and another name.
void renameLoopback(const Bytes& address, const char* name) {
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_hwaddr.sa_family = ARPHRD_LOOPBACK;
    std::memcpy(request.ifr_hwaddr.sa_data, address.data(), address.size());
    EXPECT_EQ(0, ioctl(socket, SIOCSIFHWADDR, &request)) << std::strerror(errno);
    std::strcpy(request.ifr_newname, name);
    EXPECT_EQ(0, ioctl(socket, SIOCSIFNAME, &request)) << std::strerror(errno);
    close(socket);
}

TEST(MACAddressTest, AnInterfaceHasTheAddressItWasGiven) {
    inPrivateNetwork([] {
        renameLoopback({0x02, 0xFE, 0x80, 0x7F, 0x00, 0xFF}, "panel0");
        EXPECT_STREQ("02:FE:80:7F:00:FF", MACAddress::fromInterface("panel0").toString());
        EXPECT_EQ(kNone, MACAddress::fromInterface("lo").bytes());
    });
}

TEST(MACAddressTest, ANameMayHaveFifteenCharactersAndALongerOneIsNotCut) {
    inPrivateNetwork([] {
        renameLoopback(kExample, "abcdefghijklmno");
        EXPECT_EQ(kExample, MACAddress::fromInterface("abcdefghijklmno").bytes());
        EXPECT_EQ(kNone, MACAddress::fromInterface("abcdefghijklmnop").bytes());
        EXPECT_EQ(kNone, MACAddress::fromInterface("abcdefghijklmn").bytes());
    });
}

TEST(MACAddressTest, AskingAnInterfaceLeavesNoDescriptorOpen) {
    const auto openDescriptors = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    const auto before = openDescriptors();
    for (int i = 0; i < 10; ++i) {
        MACAddress::fromInterface(i % 2 == 0 ? "lo" : "nosuchif0");
    }
    EXPECT_EQ(before, openDescriptors());
}

}  // namespace
