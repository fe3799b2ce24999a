#include <array>
#include <string>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"
#include "Vl/HAL/Fpga/CoreLayout.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HAL::getPldCoreAddress;
using Valen::HAL::getPldCoreInfo;

class DeviceLayoutTest : public BoardWorld {
protected:
    DeviceLayoutTest() { logUpTo(Valen::Log::SeverityLevel::DEBUG); }
};

TEST_F(DeviceLayoutTest, LayoutsOfAnyLengthAreReadWhole) {
    const auto layoutOf = [](std::size_t size) {
        // A record of 4 + 4 bytes goes before the end.
        return std::string(size - 12, 'x') + std::string("\0\0\0", 3) + core("y", {9}).substr(0, 8);
    };
    for (const auto size : std::to_array<std::size_t>({100, 8191, 8192, 8193, 16384, 100000})) {
        SCOPED_TRACE(size);
        writeLayout("fpga", layoutOf(size));
        const auto bytes = Valen::HAL::readLayout("fpga");
        ASSERT_TRUE(bytes);
        EXPECT_EQ(layoutOf(size).size(), bytes->size());
        unsigned int word = 0;
        EXPECT_EQ(1, getPldCoreInfo("fpga", "y", &word, 0, -1, -1));
        EXPECT_EQ(9U, word);
    }
}

TEST_F(DeviceLayoutTest, ALayoutThatCannotBeReadHoldsNoCore) {
    support::PrivateWorld::makeDirectory("/sys/bus/avalon/devices/fpga/layout");
    unsigned int word = 0;
    EXPECT_EQ(-5, getPldCoreInfo("fpga", "x", &word, 1, -1, -1));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(DeviceLayoutTest, EveryDeviceHasALayoutOfItsOwn) {
    writeLayout("fpga", core("x", {1, 0x1040}));
    writeLayout("cpld", core("x", {1, 0x2040}));
    unsigned int word = 0;
    EXPECT_EQ(1, getPldCoreInfo("fpga", "x", &word, 1, -1, -1));
    EXPECT_EQ(0x1040U, word);
    EXPECT_EQ(1, getPldCoreInfo("cpld", "x", &word, 1, -1, -1));
    EXPECT_EQ(0x2040U, word);
    EXPECT_EQ(0, descriptorsOn("/sys/bus/avalon/devices/fpga/layout"));
}

TEST_F(DeviceLayoutTest, AMissingLayoutIsAnError) {
    logUpTo(Valen::Log::SeverityLevel::ERROR);
    unsigned int word = 0;
    EXPECT_EQ(-8, getPldCoreInfo("fpga", "x", &word, 1, -1, -1));
    EXPECT_EQ(-8, getPldCoreAddress("cpld", "x", &word, 1, -1, -1));
    EXPECT_EQ(-1, getPldCoreAddress("other", "x", 1, -1, -1));
    EXPECT_THAT(syslog.lines(),
                ElementsAre(error("CPCardInterface: could not find: /sys/bus/avalon/devices/fpga/layout"),
                            error("CPCardInterface: could not find: /sys/bus/avalon/devices/cpld/layout"),
                            error("CPCardInterface: could not find: /sys/bus/avalon/devices/other/layout")));
}

TEST_F(DeviceLayoutTest, AddressesLoseTheirLowSixBits) {
    writeLayout("fpga", core("x", {1, 0xFFFFFFFF}));
    unsigned int address = 0;
    EXPECT_EQ(1, getPldCoreAddress("fpga", "x", &address, 1, -1, -1));
    EXPECT_EQ(0xFFFFFFC0U, address);
    EXPECT_EQ(0xFFFFFFC0L, getPldCoreAddress("fpga", "x", 1, -1, -1));
}

TEST_F(DeviceLayoutTest, AFailedAddressLookupClearsLowBitsTooOnPurpose) {
    unsigned int address = 0xFFFFFFFF;
    EXPECT_EQ(-8, getPldCoreAddress("fpga", "x", &address, 1, -1, -1));
    EXPECT_EQ(0xFFFFFFC0U, address);
    writeLayout("fpga", core("y", {1, 64}));
    address = 0x7F;
    EXPECT_EQ(-5, getPldCoreAddress("fpga", "x", &address, 1, -1, -1));
    EXPECT_EQ(0x40U, address);
}

TEST_F(DeviceLayoutTest, TheShortFormFoldsEveryFailureIntoMinusOne) {
    writeLayout("fpga", core("x", {5, 64}));
    EXPECT_EQ(64, getPldCoreAddress("fpga", "x", 1, 5, 5));
    EXPECT_EQ(-1, getPldCoreAddress("fpga", "x", 1, 6, 6));
    EXPECT_EQ(-1, getPldCoreAddress("fpga", "x", 2, -1, -1));
    EXPECT_EQ(-1, getPldCoreAddress("fpga", "y", 1, -1, -1));
    EXPECT_EQ(-1, getPldCoreAddress("cpld", "x", 1, -1, -1));
}

}  // namespace
