#include "Tools/boardsim/Models/Dp83867.h"

#include <gtest/gtest.h>

#include "Tests/boardsim/Models/ModelTime.h"

namespace {

using namespace std::chrono_literals;

class Dp83867Test : public testing::Test {
protected:
    void setAddress(std::uint16_t address, std::uint16_t function = 0x4000) {
        phy.write(13, 0x001F);
        phy.write(14, address);
        phy.write(13, function | 0x001F);
    }

    models::ModelTime time;
    boardsim::Dp83867 phy{time.clock()};
};

struct Value {
    unsigned reg;
    std::uint16_t value;
};

TEST_F(Dp83867Test, HasTheDataSheetsValuesAfterPowerOn) {
    for (const Value& known : {Value{0, 0x1140}, Value{1, 0x7949}, Value{2, 0x2000}, Value{3, 0xA231},
                               Value{4, 0x01E1}, Value{6, 0x0064}, Value{9, 0x0300}, Value{16, 0x5848},
                               Value{20, 0x29C7}, Value{24, 0x6150}, Value{25, 0x4444}}) {
        EXPECT_EQ(known.value, phy.read(known.reg)) << known.reg;
    }
}

TEST_F(Dp83867Test, ExtendedRegistersAreBehindRegisters13And14) {
    setAddress(0x016F);
    EXPECT_EQ(0x0095, phy.read(14));
    phy.write(14, 0x0015);
    EXPECT_EQ(0x0015, phy.read(14));
    setAddress(0x00FE);
    EXPECT_EQ(0xE721, phy.read(14));
    setAddress(0x016F);
    EXPECT_EQ(0x0015, phy.read(14));
}

TEST_F(Dp83867Test, OnlyTheWritableBitsOfAnExtendedRegisterChange) {
    setAddress(0x016F);
    phy.write(14, 0xFF7F);
    EXPECT_EQ(0x0015, phy.read(14));
}

TEST_F(Dp83867Test, TheAddressCanBeReadBack) {
    setAddress(0x0170);
    phy.write(13, 0x001F);
    EXPECT_EQ(0x0170, phy.read(14));
}

TEST_F(Dp83867Test, TheAddressCountsUpWhereThatIsAskedFor) {
    setAddress(0x016F, 0x8000);
    EXPECT_EQ(0x0095, phy.read(14));
    EXPECT_EQ(0x0C10, phy.read(14));
    setAddress(0x016F, 0xC000);
    EXPECT_EQ(0x0095, phy.read(14));
    EXPECT_EQ(0x0095, phy.read(14)) << "only writes count";
    phy.write(14, 0x0095);
    EXPECT_EQ(0x0C10, phy.read(14));
}

TEST_F(Dp83867Test, UnknownExtendedRegistersAndOtherDevicesReadZero) {
    setAddress(0x1234);
    phy.write(14, 0xFFFF);
    EXPECT_EQ(0, phy.read(14));
    phy.write(13, 0x4003);
    EXPECT_EQ(0, phy.read(14));
}

TEST_F(Dp83867Test, StatusTellsSpeedDuplexAndLink) {
    EXPECT_EQ(0x0000, phy.read(17));
    time.pass(10ms);
    EXPECT_EQ(0xBC00, phy.read(17)) << "with the page received";
    EXPECT_EQ(0xAC00, phy.read(17)) << "1000 Mbit/s, full duplex, resolved, link up";
    phy.write(4, 0x0061);
    phy.write(9, 0x0000);
    phy.write(0, 0x1340);
    time.pass(10ms);
    phy.read(17);
    EXPECT_EQ(0x2C00, phy.read(17)) << "10 Mbit/s";
}

TEST_F(Dp83867Test, EveryResetPutsTheLedsAndExtendedRegistersBack) {
    for (const Value& reset : {Value{0, 0x9140}, Value{31, 0x8000}}) {
        phy.write(24, 0x0000);
        phy.write(25, 0x0555);
        setAddress(0x016F);
        phy.write(14, 0);
        phy.write(reset.reg, reset.value);
        time.pass(200us);
        EXPECT_EQ(0x6150, phy.read(24)) << reset.reg;
        EXPECT_EQ(0x4444, phy.read(25)) << reset.reg;
        setAddress(0x016F);
        EXPECT_EQ(0x0095, phy.read(14)) << reset.reg;
    }
}

TEST_F(Dp83867Test, ASoftwareRestartKeepsRegistersAndDropsTheLink) {
    time.pass(10ms);
    phy.write(25, 0x0555);
    phy.write(31, 0x4000);
    EXPECT_EQ(0x0555, phy.read(25));
    EXPECT_EQ(0x0000, phy.read(31)) << "the bit clears itself";
    EXPECT_EQ(0x0000, phy.read(17));
}

}  // namespace
