#include "Tools/boardsim/Models/MiiPort.h"

#include <gtest/gtest.h>

#include "Tools/boardsim/Models/Phy88e1510.h"

namespace {

using boardsim::MdioBus;
using boardsim::MiiPort;
using boardsim::Phy88e1510;

class MiiPortTest : public testing::Test {
protected:
    MiiPortTest() { bus.attach(3, phy); }

    std::uint16_t read(std::uint16_t address, std::uint16_t reg) {
        mii_ioctl_data data{address, reg, 0, 0};
        EXPECT_EQ(std::errc{}, port.request(0x8948, data));
        return data.val_out;
    }

    Phy88e1510 phy{[] { return std::chrono::steady_clock::time_point(); }};
    MdioBus bus;
    MiiPort port{"eth0", 3, bus};
};

TEST_F(MiiPortTest, TellsTheAddressOfItsPhyAndTheRegisterAskedFor) {
    mii_ioctl_data data{31, 2, 0, 0};
    EXPECT_EQ(std::errc{}, port.request(0x8947, data));
    EXPECT_EQ(3U, data.phy_id);
    EXPECT_EQ(0x0141U, data.val_out);
}

TEST_F(MiiPortTest, ReadsAndWritesRegisters) {
    mii_ioctl_data data{3, 4, 0x0061, 0};
    EXPECT_EQ(0x0141U, read(3, 2));
    EXPECT_NE(0x0061U, read(3, 4));
    EXPECT_EQ(std::errc{}, port.request(0x8949, data));
    EXPECT_EQ(0x0061U, read(3, 4));
}

TEST_F(MiiPortTest, APhyThatIsNotThereReadsAsOnes) {
    EXPECT_EQ(0xFFFFU, read(0, 2));
    EXPECT_EQ(0xFFFFU, read(31, 0));
}

TEST_F(MiiPortTest, OnlyTheLowFiveBitsOfAddressAndRegisterCount) {
    EXPECT_EQ(0x0141U, read(0xFF23, 0xFFE2));
}

TEST_F(MiiPortTest, OtherRequestsAreNotSupported) {
    mii_ioctl_data data{3, 4, 0x0061, 0};
    for (const unsigned code : {0x8946U, 0x894AU, 0x89F0U}) {
        EXPECT_EQ(std::errc::operation_not_supported, port.request(code, data)) << code;
    }
    EXPECT_NE(0x0061U, read(3, 4));
}

}  // namespace
