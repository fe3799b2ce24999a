#include "Tools/boardsim/Models/TemperatureRegister.h"

#include <gtest/gtest.h>

namespace {

using boardsim::TemperatureCode;
using boardsim::TemperatureRegister;

TEST(TemperatureRegisterTest, TheMiscellaneousRegisterTellsDegreesPlus128InItsLowByte) {
    EXPECT_EQ(0x000000A0U, TemperatureRegister(TemperatureCode::Offset, 32).value());
    EXPECT_EQ(0x12345600U, TemperatureRegister(TemperatureCode::Offset, -128, 0x12345600).value());
    EXPECT_EQ(0x123456FFU, TemperatureRegister(TemperatureCode::Offset, 127, 0x12345600).value());
}

TEST(TemperatureRegisterTest, TheOthersTellDegreesFromBit8Up) {
    EXPECT_EQ(0x00003D00U, TemperatureRegister(TemperatureCode::Shifted, 61).value());
    EXPECT_EQ(0xFFFFFF00U, TemperatureRegister(TemperatureCode::Shifted, 0xFFFFFF).value());
}

TEST(TemperatureRegisterTest, ATemperatureChangesAndTheOtherBitsStay) {
    TemperatureRegister reg(TemperatureCode::Offset, 32, 0x500);
    reg.setCelsius(-1);
    EXPECT_EQ(0x57FU, reg.value());
    reg.setValue(0xDEADBEEF);
    EXPECT_EQ(0xDEADBEEFU, reg.value());
}

TEST(TemperatureRegisterTest, EachTellsItsRange) {
    const TemperatureRegister misc(TemperatureCode::Offset, 0);
    EXPECT_EQ(-128, misc.least());
    EXPECT_EQ(127, misc.largest());
    const TemperatureRegister die(TemperatureCode::Shifted, 0);
    EXPECT_EQ(0, die.least());
    EXPECT_EQ(0xFFFFFF, die.largest());
}

TEST(TemperatureRegisterTest, TheMiscellaneousRegisterCanBeWrittenAsAWord) {
    TemperatureRegister reg(TemperatureCode::Offset, 32);
    EXPECT_FALSE(reg.write(0, 4, 3));
    EXPECT_TRUE(reg.write(0, 2, 3));
}

TEST(TemperatureRegisterTest, TheOthersCanOnlyBeReadAsAWord) {
    TemperatureRegister reg(TemperatureCode::Shifted, 61);
    EXPECT_EQ(0x3D00U, reg.read(0, 4).value);
    EXPECT_FALSE(reg.read(0, 4).refused);
    EXPECT_TRUE(reg.read(0, 2).refused);
    EXPECT_TRUE(reg.write(0, 4, 0));
    EXPECT_EQ(0x3D00U, reg.value());
}

}  // namespace
