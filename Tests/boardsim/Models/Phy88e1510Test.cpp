#include "Tools/boardsim/Models/Phy88e1510.h"

#include <gtest/gtest.h>

#include "Tests/boardsim/Models/ModelTime.h"

namespace {

using namespace std::chrono_literals;

class Phy88e1510Test : public testing::Test {
protected:
    void page(std::uint16_t number) { phy.write(22, number); }

    models::ModelTime time;
    boardsim::Phy88e1510 phy{time.clock()};
};

TEST_F(Phy88e1510Test, HasTheDataSheetsValuesAfterAHardwareReset) {
    EXPECT_EQ(0x1140, phy.read(0));
    EXPECT_EQ(0x0141, phy.read(2));
    EXPECT_EQ(0x0DD1, phy.read(3));
    EXPECT_EQ(0x3060, phy.read(16));
    EXPECT_EQ(0x0000, phy.read(22));
    page(2);
    EXPECT_EQ(0x1046, phy.read(21));
    page(3);
    EXPECT_EQ(0x177E, phy.read(16));
}

TEST_F(Phy88e1510Test, APageHasItsOwnRegisters) {
    page(3);
    phy.write(16, 0x0888);
    EXPECT_EQ(0x0888, phy.read(16));
    EXPECT_EQ(3, phy.read(22)) << "the page register is on every page";
    page(0);
    EXPECT_EQ(0x3060, phy.read(16));
    phy.write(16, 0x0060);
    page(3);
    EXPECT_EQ(0x0888, phy.read(16));
}

TEST_F(Phy88e1510Test, WhoForgetsThePageMissesTheClause22Registers) {
    page(3);
    EXPECT_EQ(0, phy.read(2));
    phy.write(4, 0x0001);
    page(0);
    EXPECT_EQ(0x01E1, phy.read(4));
}

TEST_F(Phy88e1510Test, UnknownPagesReadZeroAndTakeNothing) {
    page(77);
    phy.write(16, 0x1234);
    EXPECT_EQ(0, phy.read(16));
}

TEST_F(Phy88e1510Test, StatusTellsSpeedDuplexAndLink) {
    EXPECT_EQ(0x0000, phy.read(17));
    time.pass(10ms);
    phy.read(17);
    EXPECT_EQ(0xAC00, phy.read(17));
    phy.write(9, 0x0000);
    phy.write(0, 0x9140);
    time.pass(10ms);
    phy.read(17);
    EXPECT_EQ(0x6C00, phy.read(17)) << "100 Mbit/s, full duplex, resolved, link up";
}

TEST_F(Phy88e1510Test, ASoftwareResetKeepsAdvertisementPageAndLeds) {
    phy.write(4, 0x0941);
    phy.write(9, 0x0000);
    page(3);
    phy.write(16, 0x0889);
    page(0);
    phy.write(0, 0x9140);
    EXPECT_EQ(0x9140, phy.read(0));
    time.pass(200us);
    EXPECT_EQ(0x1140, phy.read(0));
    EXPECT_EQ(0x0940, phy.read(4) & 0xFFE0);
    EXPECT_EQ(0x0000, phy.read(9));
    page(3);
    EXPECT_EQ(0x0889, phy.read(16));
}

TEST_F(Phy88e1510Test, ASoftwareResetEndsLoopbackAndPowerDown) {
    phy.write(0, 0x5940);
    phy.write(0, 0xD940);
    time.pass(200us);
    EXPECT_EQ(0x1140, phy.read(0));
}

}  // namespace
