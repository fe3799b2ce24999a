#include "Vl/HAL/Board/VideoChip.h"

#include <filesystem>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/Bus/I2cCalls.h"
#include "Vl/HAL/Chips/ADVInterface.h"

namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::openVideoChipOnI2c;
using Valen::openVideoChipOnSpi;

constexpr const char* kSpiRegisters = "/sys/bus/avalon/devices/spi_videosync_out/spi1.5/adv_regs";

class VideoChipTest : public BoardWorld {
protected:
    I2cCalls kernel;
};

TEST_F(VideoChipTest, OnSpiItIsFoundWithAnyChipSelect) {
    support::PrivateWorld::write(kSpiRegisters, "\x11\x22");
    logUpTo(Valen::Log::SeverityLevel::DEBUG);
    const auto chip = openVideoChipOnSpi();
    ASSERT_NE(nullptr, chip);
    EXPECT_EQ(0x22, chip->getReg(1));
    EXPECT_EQ(1, chip->setReg(0, 0x33));
    EXPECT_EQ("\x33\x22", support::PrivateWorld::read(kSpiRegisters));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(debug(std::string("CPCardInterface: ADV SPI found: ") + kSpiRegisters)));
}

TEST_F(VideoChipTest, FindingItOnSpiIsLoggedForDebuggingOnly) {
    support::PrivateWorld::write(kSpiRegisters, "");
    openVideoChipOnSpi();
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(VideoChipTest, ASpiDeviceWithoutRegistersIsHandedOutAllTheSame) {
    fs::create_directories(fs::path(kSpiRegisters).parent_path());
    const auto chip = openVideoChipOnSpi();
    ASSERT_NE(nullptr, chip);
    EXPECT_EQ(-1, chip->setReg(0, 1));
}

TEST_F(VideoChipTest, WithoutItsSpiDeviceThereIsNone) {
    EXPECT_EQ(nullptr, openVideoChipOnSpi());
    EXPECT_THAT(syslog.lines(), ElementsAre(error("CPCardInterface: ADV SPI not found!")));
}

TEST_F(VideoChipTest, OnI2cItIsFoundByItsName) {
    fs::create_directories("/tmp/i2c");
    fs::create_symlink("/sys/bus/i2c/devices/3-002a", "/tmp/i2c/video_enc");
    support::PrivateWorld::write("/dev/i2c-3", "");
    logUpTo(Valen::Log::SeverityLevel::DEBUG);
    const auto chip = openVideoChipOnI2c("video_enc");
    EXPECT_EQ(1, chip->setReg(0x40, 0xA5));
    EXPECT_THAT(kernel.calls, ElementsAre("select 2a", "write8 40=a5"));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(VideoChipTest, OnI2cItIsHandedOutEvenWhenItFailed) {
    const auto chip = openVideoChipOnI2c("video_enc");
    ASSERT_NE(nullptr, chip);
    EXPECT_EQ(-1, chip->getReg(0));
    EXPECT_THAT(syslog.lines(), ElementsAre(error("Core: Unable to open adv 'video_enc'")));
}

}  // namespace
