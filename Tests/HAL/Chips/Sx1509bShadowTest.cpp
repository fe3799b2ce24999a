#include <initializer_list>

#include "Tests/HAL/Chips/Sx1509bWorld.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::Sx1509b;

class Sx1509bShadowTest : public Sx1509bWorld {};

TEST_F(Sx1509bShadowTest, ALevelThatIsInTheShadowIsNotWritten) {
    Sx1509b expander = opened();
    EXPECT_TRUE(expander.setValueA(2, 1, false));
    EXPECT_TRUE(expander.setValueA(0, 0, false));
    EXPECT_TRUE(expander.setValueB(0, 7, false));
    EXPECT_TRUE(expander.setValueA(2, 1, true));
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, IsEmpty());
}

TEST_F(Sx1509bShadowTest, ADeferredLevelIsInTheShadowAndThusNotWrittenAtOnceOnPurpose) {
    Sx1509b expander = opened();
    EXPECT_TRUE(expander.setValueA(0, 1, true));
    EXPECT_TRUE(expander.setValueA(0, 1, false));
    EXPECT_THAT(chip.calls, IsEmpty());
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=3d"));
}

TEST_F(Sx1509bShadowTest, ThereIsNoPinAboveSeven) {
    Sx1509b expander = opened();
    for (const std::uint8_t pin : std::initializer_list<std::uint8_t>{8, 31, 32, 255}) {
        EXPECT_TRUE(expander.setValueA(pin, 1, false));
        EXPECT_TRUE(expander.setValueB(pin, 1, true));
    }
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, IsEmpty());
}

TEST_F(Sx1509bShadowTest, ChangesOfOnePortLeaveTheOtherAlone) {
    Sx1509b expander = opened();
    expander.setAOutputs(0xFF, 0x00);
    expander.setBOutputs(0xFF, 0xFF);
    chip.calls.clear();
    EXPECT_TRUE(expander.reinitRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write16 0e=0000", "write16 10=00ff"));
}

TEST_F(Sx1509bShadowTest, ValuesOutsideTheMaskAreSetTooOnPurpose) {
    Sx1509b expander = opened();
    EXPECT_TRUE(expander.setAOutputs(0x01, 0x81));
    EXPECT_TRUE(expander.setBOutputs(0x00, 0x42));
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=bd", "write8 0f=fe", "write8 10=e7", "write8 0e=f0"));
}

TEST_F(Sx1509bShadowTest, OutputsOfAFreshChipLeaveTheOtherPinsInputs) {
    Sx1509b expander = opened();
    EXPECT_TRUE(expander.setAOutputs(0x30, 0x00));
    chip.registers[0x0F] = 0xCF;
    EXPECT_EQ(0, expander.detectReset());
    chip.registers[0x0F] = 0xFF;
    EXPECT_EQ(1, expander.detectReset());
}

TEST_F(Sx1509bShadowTest, DeferredChangesOfBothPortsAreOneWordWrite) {
    Sx1509b expander = opened();
    EXPECT_TRUE(expander.setValueA(0, 1, true));
    EXPECT_TRUE(expander.setValueA(7, 1, true));
    EXPECT_TRUE(expander.setValueB(1, 1, true));
    EXPECT_THAT(chip.calls, IsEmpty());
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write16 10=bda7"));
}

TEST_F(Sx1509bShadowTest, DeferredChangesAreSentOnce) {
    Sx1509b expander = opened();
    expander.setValueA(0, 1, true);
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=3d"));
}

TEST_F(Sx1509bShadowTest, DeferredChangesAreForgottenEvenWhenTheirWriteFails) {
    Sx1509b expander = opened();
    expander.setValueA(0, 1, true);
    expander.setValueB(1, 1, true);
    chip.failing = 0;
    EXPECT_FALSE(expander.writeDataRegisters());
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write16 10=3da7"));
}

TEST_F(Sx1509bShadowTest, AChangeAtOnceTakesDeferredOnesOfItsPortAlong) {
    Sx1509b expander = opened();
    expander.setValueA(0, 1, true);
    expander.setValueA(1, 1, false);
    EXPECT_TRUE(expander.writeDataRegisters()) << "and again, which does no harm";
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=3f", "write8 11=3f"));
}

TEST_F(Sx1509bShadowTest, AFailedChangeIsSentWithTheNextOne) {
    Sx1509b expander = opened();
    chip.failing = 0;
    EXPECT_FALSE(expander.setValueA(0, 1, false));
    EXPECT_TRUE(expander.setValueA(1, 1, false));
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=3d", "write8 11=3f"));
}

TEST_F(Sx1509bShadowTest, AFailedChangeIsSentWhenTheChipIsRestored) {
    Sx1509b expander = opened();
    chip.failing = 0;
    EXPECT_FALSE(expander.setAOutputs(0x0F, 0x00));
    chip.calls.clear();
    chip.failing.reset();
    EXPECT_TRUE(expander.reinitRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write16 0e=f0f0", "write16 10=30a5"));
}

}  // namespace
