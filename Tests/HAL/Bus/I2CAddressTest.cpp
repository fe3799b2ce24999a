#include "Vl/HAL/Bus/I2CAddress.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using Valen::I2CAddress;

constexpr unsigned int kNone = 0xFFFFFFFF;

TEST(I2CAddressTest, IsNoDeviceAtFirst) {
    const I2CAddress place;
    EXPECT_STREQ("", place.name);
    EXPECT_EQ(kNone, place.bus);
    EXPECT_EQ(kNone, place.address);
}

TEST(I2CAddressTest, ReadsADecimalBusAndAHexadecimalAddress) {
    const struct {
        const char* text;
        unsigned int bus;
        unsigned int address;
    } rows[] = {
        {"3-0050", 3, 0x50},
        {"12-1a", 12, 0x1A},
        {"12-1A", 12, 0x1A},
        {"0-0", 0, 0},
        {"08-08", 8, 8},
        {"3-50 and more", 3, 0x50},
        {"3 - 50-60", 3, kNone},
        {"3x-50", 3, 0x50},
        {"3-50-60", 3, 0x50},
        {"3-0x50", 3, 0},
        {"4294967295-ffffffff", 0xFFFFFFFF, 0xFFFFFFFF},
        {"7", 7, kNone},
        {"7-", 7, kNone},
        {"7-g", 7, kNone},
        {"7--5", 7, kNone},
        {"7- 5", 7, kNone},
        {"7-100000000", 7, kNone},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const I2CAddress place(row.text);
        EXPECT_EQ(row.bus, place.bus);
        EXPECT_EQ(row.address, place.address);
    }
}

TEST(I2CAddressTest, WhatDoesNotBeginWithABusChangesNothing) {
    for (const char* text : {"abc", "", "-", "-50", " 3-50", "+3-50", "x3-50", "4294967296-50"}) {
        SCOPED_TRACE(text);
        I2CAddress place("3-0050");
        place.parse(text);
        EXPECT_STREQ("3-0050", place.name);
        EXPECT_EQ(3U, place.bus);
        EXPECT_EQ(0x50U, place.address);
    }
}

TEST(I2CAddressTest, WhatIsNotReachedStaysAsItWas) {
    for (const char* text : {"12", "12-", "12-g"}) {
        SCOPED_TRACE(text);
        I2CAddress place("3-0050");
        place.parse(text);
        EXPECT_STREQ("3-0050", place.name);
        EXPECT_EQ(12U, place.bus);
        EXPECT_EQ(0x50U, place.address);
    }
}

TEST(I2CAddressTest, TheNameIsTheWholeTextUpToFifteenCharacters) {
    EXPECT_STREQ("3-0050", I2CAddress("3-0050").name);
    EXPECT_STREQ("3-50 and", I2CAddress("3-50 and").name);
    EXPECT_STREQ("3-0050 89012345", I2CAddress("3-0050 89012345").name);
    EXPECT_STREQ("3-50 9012345678", I2CAddress("3-50 90123456789").name);
}

TEST(I2CAddressTest, AShorterNameReplacesALongerOne) {
    I2CAddress place("3-00000050");
    place.parse("4-5");
    EXPECT_STREQ("4-5", place.name);
}

}  // namespace
