#include "Vl/HAL/Bus/I2CfindBus.h"

#include <filesystem>

#include "Tests/HAL/BoardWorld.h"

namespace {

namespace fs = std::filesystem;

using Valen::I2CfindBus;

class I2CfindBusTest : public BoardWorld {
protected:
    I2CfindBusTest() {
        fs::create_directories("/tmp/i2c");
        fs::create_symlink("/dev/i2c-4", "/tmp/i2c/qsfp");
        fs::create_symlink("/dev/i2c-5", "/tmp/i2c/qsfp0");
        fs::create_symlink("/dev/i2c-6", "/tmp/i2c/qsfp4294967295");
        fs::create_symlink("/dev/i2c", "/tmp/i2c/unnumbered");
        fs::create_symlink("/dev/i2c-", "/tmp/i2c/nothing");
    }
};

TEST_F(I2CfindBusTest, FindsABusByItsName) {
    EXPECT_EQ(4, I2CfindBus("qsfp"));
    EXPECT_EQ(0, I2CfindBus("unnumbered"));
}

TEST_F(I2CfindBusTest, FindsABusByNameAndDecimalIndex) {
    EXPECT_EQ(5, I2CfindBus("qsfp", 0));
    EXPECT_EQ(6, I2CfindBus("qsfp", 4294967295U));
}

TEST_F(I2CfindBusTest, WhatIsNotFoundIsMinusOne) {
    EXPECT_EQ(-1, I2CfindBus("missing"));
    EXPECT_EQ(-1, I2CfindBus("nothing"));
    EXPECT_EQ(-1, I2CfindBus("qsfp", 1));
    EXPECT_EQ(-1, I2CfindBus(""));
}

}  // namespace
