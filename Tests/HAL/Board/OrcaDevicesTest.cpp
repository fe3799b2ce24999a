#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>

#include "Tests/HAL/Board/EepromFields.h"
#include "Tests/HAL/Board/VariantWorld.h"
#include "Vl/HAL/Board/CPLinkInterface.h"
#include "Vl/HAL/Board/OrcaInterface.h"
#include "Vl/HAL/Chips/ADVInterface.h"
#include "Vl/HAL/Chips/EthernetPhyDP83867IS.h"

namespace {

namespace fs = std::filesystem;

using std::string_literals::operator""s;
using support::PrivateWorld;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::OrcaInterface;
using Valen::VersionsRecord;

constexpr const char* kScript = "/tmp/exec_before_reboot.sh";
constexpr const char* kCycle = "i2cset -y 7 0x5b 0xf 0xf7\n";

class OrcaDevicesTest : public VariantWorld {
protected:
    static void writeEeprom(const std::string& image) {
        PrivateWorld::write("/tmp/7-0050/eeprom", image);
        link("eeprom", "/tmp/7-0050");
    }
};

TEST_F(OrcaDevicesTest, ThePowerCycleIsAskedForInTheScriptRunBeforeAReboot) {
    kernel.calls.clear();
    EXPECT_TRUE(OrcaInterface(nullptr).requestPowerCycleBoot());
    EXPECT_EQ(kCycle, PrivateWorld::read(kScript));
    EXPECT_THAT(kernel.callsOf("7-5b"), IsEmpty()) << "the supply itself is left alone";
    EXPECT_THAT(kernel.callsOf("i2c-7"), IsEmpty());
    EXPECT_EQ(0, descriptorsOn(kScript));
}

TEST_F(OrcaDevicesTest, TwoRequestsAppendTwoLines) {
    PrivateWorld::write(kScript, "#!/bin/sh\n");
    OrcaInterface board(nullptr);
    EXPECT_TRUE(board.requestPowerCycleBoot());
    EXPECT_TRUE(board.requestPowerCycleBoot());
    EXPECT_EQ("#!/bin/sh\n"s + kCycle + kCycle, PrivateWorld::read(kScript));
}

TEST_F(OrcaDevicesTest, AScriptThatCannotBeOpenedFailsTheRequest) {
    fs::create_directory(kScript);
    EXPECT_FALSE(OrcaInterface(nullptr).requestPowerCycleBoot());
}

TEST_F(OrcaDevicesTest, AScriptThatCannotBeWrittenFailsTheRequest) {
    fs::create_symlink("/dev/full", kScript);
    EXPECT_FALSE(OrcaInterface(nullptr).requestPowerCycleBoot());
}

TEST_F(OrcaDevicesTest, WithoutASupplyTheCommandNamesNone) {
    unlink("psu");
    EXPECT_TRUE(OrcaInterface(nullptr).requestPowerCycleBoot());
    EXPECT_EQ("i2cset -y -1 0xffffffff 0xf 0xf7\n", PrivateWorld::read(kScript));
}

TEST_F(OrcaDevicesTest, TheVideoChipIsOnI2c) {
    OrcaInterface board(nullptr);
    kernel.calls.clear();
    const auto chip = static_cast<Valen::CPInterface&>(board).getADV();
    EXPECT_EQ(1, chip->setReg(0x40, 0xA5));
    EXPECT_EQ(0xA5, chip->getReg(0x40));
    EXPECT_THAT(kernel.calls, ElementsAre("i2c-7 select 2a", "7-2a write8 40=a5", "7-2a read8 40"));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(OrcaDevicesTest, AVideoChipThatFailedIsHandedOutAllTheSame) {
    OrcaInterface board(nullptr);
    unlink("video_enc");
    const auto chip = board.getADV();
    ASSERT_NE(nullptr, chip);
    EXPECT_EQ(-1, chip->getReg(0));
    EXPECT_THAT(syslog.lines(), ElementsAre(error("Core: Unable to open adv 'video_enc'")));
}

TEST_F(OrcaDevicesTest, TheConfigurationPhyIsBehindTheFirstInterfaceOnPurpose) {
    Valen::CPLinkInterface link;
    OrcaInterface board(&link);
    kernel.calls.clear();
    kernel.phyWord = 0x2000;
    const auto phy = board.getConfigEthPhy(5);
    EXPECT_NE(nullptr, dynamic_cast<Valen::HAL::EthernetPhyDP83867IS*>(phy.get()));
    EXPECT_EQ(0x2000, phy->getPhyId1());
    EXPECT_THAT(kernel.calls, ElementsAre("eth0 own", "eth0 phy 5 read 2"));
}

TEST_F(OrcaDevicesTest, WithoutALinkTheConfigurationPhyFailsItsOwnChecks) {
    const auto phy = OrcaInterface(nullptr).getConfigEthPhy(0);
    ASSERT_NE(nullptr, phy);
    EXPECT_EQ(-1, phy->getPhyId1());
    EXPECT_FALSE(phy->initPhy());
}

TEST_F(OrcaDevicesTest, TheVersionsComeFromTheEeprom) {
    std::string device(42, '\0');
    device.replace(0, 9, "\x21\x00\x00\x00\x12\x34\x5A\xBC\xDE"s);
    device.replace(18, 4, "\x04\x03\x02\x01");
    device.replace(26, 4, "\x14\x13\x12\x11");
    std::string pcb(42, '\0');
    pcb.replace(34, 7,
                "\x02\x00\x01\x00"
                "01a"s);
    writeEeprom(field(3, "mac addresses") + field(2, pcb) + field(4, "sandwich") + field(1, device));
    const int before = descriptors();
    const VersionsRecord versions = OrcaInterface(nullptr).getVersions();
    EXPECT_EQ(2100000012345u, versions.serial);
    EXPECT_EQ(0x01020304u, versions.deviceValue1);
    EXPECT_EQ(0x11121314u, versions.deviceValue2);
    EXPECT_EQ(0x03000102u, versions.pcbVersion);
    EXPECT_EQ(0x1Au, versions.pcbRevision);
    EXPECT_EQ(0u, versions.reserved);
    EXPECT_EQ("2100000012345abcde", versions.serialText);
    EXPECT_EQ(before, descriptors());
}

TEST_F(OrcaDevicesTest, WithoutTheEepromTheVersionsAreAllZero) {
    const VersionsRecord versions = OrcaInterface(nullptr).getVersions();
    EXPECT_EQ(0u, versions.serial);
    EXPECT_EQ(0u, versions.pcbVersion);
    EXPECT_EQ("", versions.serialText);
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(OrcaDevicesTest, AnErasedEepromTellsNoVersions) {
    writeEeprom(std::string(1024, '\xFF'));
    testing::internal::CaptureStdout();
    EXPECT_EQ(0u, OrcaInterface(nullptr).getVersions().pcbVersion);
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
}

TEST_F(OrcaDevicesTest, TheRegistryNamesAreTheClasssOwn) {
    EXPECT_STREQ("led_sync", OrcaInterface::LED_SYNC_DEVICE_NAME);
    EXPECT_STREQ("eth_led", OrcaInterface::ETH_LED_DEVICE_NAME);
    EXPECT_STREQ("fan", OrcaInterface::FAN_DEVICE_NAME);
    EXPECT_STREQ("syn_eth", OrcaInterface::SYN_ETH_DEVICE_NAME);
    EXPECT_STREQ("psu", OrcaInterface::PSU_DEVICE_NAME);
    EXPECT_STREQ("video_enc", OrcaInterface::ADV_DEVICE_NAME);
}

}  // namespace
