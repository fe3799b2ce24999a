#include "Vl/HAL/Bus/FakeMdio.h"

#include <gtest/gtest.h>

namespace {

TEST(FakeMdioTest, EveryAccessFails) {
    Valen::HAL::FakeMdio fake;
    Valen::HAL::MDIO& mdio = fake;
    EXPECT_FALSE(mdio.setReg(0, 0));
    EXPECT_EQ(-1, mdio.getReg(0));
    mdio.changePhyAddress(1);
    EXPECT_FALSE(mdio.setReg(31, 0xFFFF));
    EXPECT_EQ(-1, mdio.getReg(31));
}

}  // namespace
