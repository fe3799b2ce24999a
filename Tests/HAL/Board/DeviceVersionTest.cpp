// The versions in the "cardid" cores of the programmable devices, read through their devices.
#include <string>
#include <vector>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Vl/Common/Identity/Version.h"

namespace {

using support::PrivateWorld;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::Version;

/// The words as a device holds them.
std::string words(const std::vector<std::uint32_t>& values) {
    std::string bytes;
    for (const std::uint32_t value : values) {
        for (int shift = 0; shift < 32; shift += 8) {
            bytes += static_cast<char>(value >> shift);
        }
    }
    return bytes;
}

class DeviceVersionTest : public BoardWorld {
protected:
    DeviceVersionTest() {
        syslog.lines();  // what the bare board misses
        logUpTo(Valen::Log::SeverityLevel::DEBUG);
    }

    void addDevice(const std::string& content) {
        writeLayout("cpld", core("cardid", {3, 0x4F}));
        PrivateWorld::write("/dev/cpld", std::string(0x40, 'x') + content);
    }

    TestBoard board;
    Version version{{1, 2, 3}};
};

TEST_F(DeviceVersionTest, ItsMonthsCountFromZero) {
    addDevice(words({0x80010203, 0x30910004, 0x80020001}));
    EXPECT_EQ(1, board.getCPLDVersion(version));
    EXPECT_EQ((Version{{0x80010203, 0x30B10004, 0x80020001}}), version);
    EXPECT_EQ(5U, version.month());
    EXPECT_THAT(syslog.lines(), IsEmpty());
    EXPECT_EQ(0, descriptorsOn("/dev/cpld"));
}

TEST_F(DeviceVersionTest, AMonthThatIsNoneSpillsIntoNoOtherField) {
    addDevice(words({0x80010203, 0x31F10004, 0}));
    EXPECT_EQ(1, board.getCPLDVersion(version));
    EXPECT_EQ(0x30110004U, version.words[1]);
}

TEST_F(DeviceVersionTest, TheLastWordCountsOnlyWithItsTopBit) {
    addDevice(words({0x80010203, 0x30910004, 0x7FFFFFFF}));
    EXPECT_EQ(1, board.getCPLDVersion(version));
    EXPECT_EQ(0U, version.words[2]);
}

TEST_F(DeviceVersionTest, TheFpgaHasOneToo) {
    writeLayout("fpga", core("cardid", {3, 0x40}));
    PrivateWorld::write("/dev/fpga", std::string(0x40, 'x') + words({0x80010203, 0x30910004, 0}));
    EXPECT_EQ(1, board.getFPGAVersion(version));
    EXPECT_EQ((Version{{0x80010203, 0x30B10004, 0}}), version);
}

TEST_F(DeviceVersionTest, WithoutTheCoreItIsMinus7) {
    writeLayout("cpld", core("other", {3, 0x40}));
    writeLayout("fpga", core("cardid", {3}));
    EXPECT_EQ(-7, board.getCPLDVersion(version));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: couldn't get cardid cpld")));
    EXPECT_EQ(-7, board.getFPGAVersion(version));
    EXPECT_EQ("CPCardInterface: couldn't get cardid fpga", syslog.texts().back());
    EXPECT_EQ((Version{{1, 2, 3}}), version);
}

TEST_F(DeviceVersionTest, WithoutTheLayoutItIsMinus7) {
    EXPECT_EQ(-7, board.getCPLDVersion(version));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(error("CPCardInterface: could not find: /sys/bus/avalon/devices/cpld/layout"),
                            debug("CPCardInterface: couldn't get cardid cpld")));
}

TEST_F(DeviceVersionTest, WithoutTheDeviceItIsMinus8) {
    writeLayout("cpld", core("cardid", {3, 0x40}));
    EXPECT_EQ(-8, board.getCPLDVersion(version));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: could not open '/dev/cpld'")));
    EXPECT_EQ((Version{{1, 2, 3}}), version);
}

TEST_F(DeviceVersionTest, ADeviceThatEndsEarlyHasAVersionAllTheSameOnPurpose) {
    addDevice(words({0x80010203}));
    EXPECT_EQ(1, board.getCPLDVersion(version));
    EXPECT_EQ((Version{{0x80010203, 0x00200000, 0}}), version);
    EXPECT_THAT(syslog.lines(), ElementsAre(error("CPCardInterface: failed to read 12 bytes of card id")));
}

}  // namespace
