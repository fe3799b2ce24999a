#include "Vl/HAL/Chips/ADVI2C.h"

#include <filesystem>
#include <memory>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/Bus/I2cCalls.h"

namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::ADVI2C;
using Valen::ADVInterface;

class ADVI2CTest : public BoardWorld {
protected:
    ADVI2CTest() {
        fs::create_directories("/tmp/i2c");
        fs::create_symlink("/sys/bus/i2c/devices/12-002a", "/tmp/i2c/video_enc");
        support::PrivateWorld::write("/dev/i2c-12", "");
    }

    I2cCalls kernel;
    ADVI2C chip;
};

TEST_F(ADVI2CTest, SelectsItsAddressOnItsBus) {
    EXPECT_TRUE(chip.init("video_enc"));
    EXPECT_EQ(1, descriptorsOn("/dev/i2c-12"));
    EXPECT_THAT(kernel.calls, ElementsAre("select 2a"));
}

TEST_F(ADVI2CTest, ANameThatIsNotRegisteredOpensNoBus) {
    support::PrivateWorld::write("/dev/i2c-0", "");
    fs::create_symlink("/sys/bus/i2c/devices/12", "/tmp/i2c/half");
    fs::create_symlink("/sys/bus/i2c/devices/none", "/tmp/i2c/none");
    for (const char* name : {"missing", "half", "none", ""}) {
        EXPECT_FALSE(chip.init(name)) << name;
    }
    EXPECT_EQ(0, descriptorsOn("/dev/i2c-12"));
    EXPECT_EQ(0, descriptorsOn("/dev/i2c-0"));
    EXPECT_THAT(kernel.calls, IsEmpty());
}

TEST_F(ADVI2CTest, FailsWithoutItsBus) {
    fs::remove("/dev/i2c-12");
    EXPECT_FALSE(chip.init("video_enc"));
    EXPECT_THAT(kernel.calls, IsEmpty());
}

TEST_F(ADVI2CTest, FailsWhenItsAddressIsRefused) {
    kernel.failing = 0;
    EXPECT_FALSE(chip.init("video_enc"));
}

TEST_F(ADVI2CTest, AccessesAreBytes) {
    chip.init("video_enc");
    kernel.registers[0x41] = 0xC3;
    EXPECT_EQ(1, chip.setReg(0x40, 0xA5));
    EXPECT_EQ(0xC3, chip.getReg(0x41));
    EXPECT_THAT(kernel.calls, ElementsAre("select 2a", "write8 40=a5", "read8 41"));
}

TEST_F(ADVI2CTest, FailedAccessesAreReported) {
    chip.init("video_enc");
    kernel.failing = 1;
    EXPECT_EQ(0, chip.setReg(0x40, 0xA5));
    kernel.failing = 2;
    EXPECT_EQ(-1, chip.getReg(0x41));
}

TEST_F(ADVI2CTest, IsClosedUntilInit) {
    EXPECT_EQ(0, chip.setReg(0x40, 0xA5));
    EXPECT_EQ(-1, chip.getReg(0x41));
}

TEST_F(ADVI2CTest, ClosesItsBusThroughItsInterface) {
    auto owned = std::make_unique<ADVI2C>();
    owned->init("video_enc");
    std::unique_ptr<ADVInterface> video = std::move(owned);
    video.reset();
    EXPECT_EQ(0, descriptorsOn("/dev/i2c-12"));
}

TEST_F(ADVI2CTest, NothingIsLogged) {
    logEverything();
    chip.init("missing");
    chip.setReg(0x40, 0xA5);
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

}  // namespace
