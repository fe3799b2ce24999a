#include "Vl/HAL/Bus/I2CRegisteredDevice.h"

#include <filesystem>
#include <string>

#include "Tests/HAL/BoardWorld.h"

namespace {

namespace fs = std::filesystem;

using Valen::I2CAddress;
using Valen::I2CRegisteredDevice;

constexpr unsigned int kNone = 0xFFFFFFFF;

class I2CRegisteredDeviceTest : public BoardWorld {
protected:
    I2CRegisteredDeviceTest() { fs::create_directories("/tmp/i2c"); }

    /// Leaves no other link behind.
    static void link(const std::string& target) {
        fs::remove("/tmp/i2c/x");
        fs::create_symlink(target, "/tmp/i2c/x");
    }

    static std::string ofLength(std::string text, std::size_t length) {
        text.insert(0, length - text.size(), '/');
        return text;
    }
};

TEST_F(I2CRegisteredDeviceTest, ABusIsTheNumberBehindTheLastHyphen) {
    const struct {
        const char* target;
        int bus;
    } rows[] = {
        {"/dev/i2c-7", 7},
        {"/dev/i2c-12", 12},
        {"/dev/i2c-007", 7},
        {"i2c-7", 7},
        {"-7", 7},
        {"/some-5/i2c-7", 7},
        {"/dev/i2c-7/", 7},
        {"/dev/i2c-7a", 7},
        {"/dev/i2c--7", 7},
        {"/dev/i2c-2147483647", 2147483647},
        {"/dev/i2c-2147483648", -1},
        {"/dev/i2c-", -1},
        {"/dev/i2c-a", -1},
        {"/dev/i2c- 7", -1},
        {"/dev/i2c-+7", -1},
        {"/dev/i2c-7-", -1},
    };
    for (const auto& row : rows) {
        link(row.target);
        EXPECT_EQ(row.bus, I2CRegisteredDevice::getBusOf("x")) << row.target;
    }
}

TEST_F(I2CRegisteredDeviceTest, ATargetWithoutAHyphenIsBusZeroOnPurpose) {
    for (const char* target : {"/dev/i2c", "7", "/"}) {
        link(target);
        EXPECT_EQ(0, I2CRegisteredDevice::getBusOf("x")) << target;
    }
}

TEST_F(I2CRegisteredDeviceTest, WhatIsNoLinkHasNoBus) {
    EXPECT_EQ(-1, I2CRegisteredDevice::getBusOf("x"));
    support::PrivateWorld::write("/tmp/i2c/x", "/dev/i2c-7");
    EXPECT_EQ(-1, I2CRegisteredDevice::getBusOf("x"));
    EXPECT_EQ(-1, I2CRegisteredDevice::getBusOf(""));
    fs::remove_all("/tmp/i2c");
    EXPECT_EQ(-1, I2CRegisteredDevice::getBusOf("x"));
}

TEST_F(I2CRegisteredDeviceTest, ALinkNeedNotLeadAnywhereThatExists) {
    link("/no/such/3-0050");
    EXPECT_EQ(50, I2CRegisteredDevice::getBusOf("x"));
    EXPECT_STREQ("3-0050", I2CRegisteredDevice::getAddressOf("x").name);
}

TEST_F(I2CRegisteredDeviceTest, TargetsOf128CharactersMayNotBeWholeAndAreRefused) {
    link(ofLength("/i2c-7", 127));
    EXPECT_EQ(7, I2CRegisteredDevice::getBusOf("x"));
    link(ofLength("/3-0050", 127));
    EXPECT_STREQ("3-0050", I2CRegisteredDevice::getAddressOf("x").name);
    for (const std::size_t length : {128U, 129U, 1000U}) {
        link(ofLength("/3-0050", length));
        EXPECT_EQ(-1, I2CRegisteredDevice::getBusOf("x"));
        EXPECT_STREQ("", I2CRegisteredDevice::getAddressOf("x").name);
    }
}

TEST_F(I2CRegisteredDeviceTest, ADeviceIsWhatTheLastComponentSays) {
    const struct {
        const char* target;
        const char* name;
        unsigned int bus;
        unsigned int address;
    } rows[] = {
        {"/sys/bus/i2c/devices/3-0050/", "3-0050", 3, 0x50},
        {"/sys/bus/i2c/devices/3-0050", "3-0050", 3, 0x50},
        {"/3-0050", "3-0050", 3, 0x50},
        {"../i2c-12/12-001a///", "12-001a", 12, 0x1A},
        {"/a/3-0050-and-longer", "3-0050-and-long", 3, 0x50},
        {"3-0050", "", kNone, kNone},
        {"3-0050/", "", kNone, kNone},
        {"/", "", kNone, kNone},
        {"///", "", kNone, kNone},
        {"/a/3", "", 3, kNone},
        {"/a/3-", "", 3, kNone},
        {"/a/3-g", "", 3, kNone},
        {"/a-1/3", "", 3, kNone},
        {"/a/i2c-3", "", 0, kNone},
        {"/a/-50", "", 0, kNone},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.target);
        link(row.target);
        const I2CAddress place = I2CRegisteredDevice::getAddressOf("x");
        EXPECT_STREQ(row.name, place.name);
        EXPECT_EQ(row.bus, place.bus);
        EXPECT_EQ(row.address, place.address);
    }
}

TEST_F(I2CRegisteredDeviceTest, WhatIsNotRegisteredIsNoDevice) {
    const I2CAddress place = I2CRegisteredDevice::getAddressOf("x");
    EXPECT_STREQ("", place.name);
    EXPECT_EQ(kNone, place.bus);
    EXPECT_EQ(kNone, place.address);
}

TEST_F(I2CRegisteredDeviceTest, NamesMayLeadOnBehindALink) {
    fs::create_directories("/tmp/devices/3-0050");
    fs::create_symlink("/dev/i2c-9", "/tmp/devices/3-0050/bus");
    link("/tmp/devices/3-0050");
    support::PrivateWorld::write("/tmp/devices/3-0050/eeprom", "contents");
    EXPECT_EQ(9, I2CRegisteredDevice::getBusOf("x/bus"));
    EXPECT_EQ("contents", support::PrivateWorld::read(I2CRegisteredDevice::getPath("x/eeprom")));
}

TEST_F(I2CRegisteredDeviceTest, PathsAreNotResolved) {
    link("/tmp/devices");
    EXPECT_EQ("/tmp/i2c/x", I2CRegisteredDevice::getPath("x"));
    EXPECT_EQ("/tmp/i2c/eeprom/eeprom", I2CRegisteredDevice::getPath("eeprom/eeprom"));
    EXPECT_EQ("/tmp/i2c//x", I2CRegisteredDevice::getPath("/x").native());
}

TEST_F(I2CRegisteredDeviceTest, NothingIsLogged) {
    logEverything();
    I2CRegisteredDevice::getBusOf("x");
    I2CRegisteredDevice::getAddressOf("x");
    EXPECT_THAT(syslog.lines(), testing::IsEmpty());
}

}  // namespace
