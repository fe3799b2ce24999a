#include "Vl/HAL/Chips/Sx1509b.h"

#include <optional>

#include "Tests/HAL/Chips/Sx1509bWorld.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::Sx1509b;

class Sx1509bTest : public Sx1509bWorld {};

TEST_F(Sx1509bTest, IsClosedWithAShadowOfZerosAtFirst) {
    Sx1509b expander;
    EXPECT_EQ("sx1509b: 0-0", expander.dbg_print());
    EXPECT_EQ(-1, expander.getInputA());
    EXPECT_EQ(-1, expander.getInputB());
    EXPECT_EQ(-1, expander.getEvtStatusB());
    EXPECT_EQ(-1, expander.detectReset());
    EXPECT_FALSE(expander.reinitRegisters());
    EXPECT_FALSE(expander.setMisc(1));
    EXPECT_TRUE(expander.setValueA(0, 0, false)) << "needs no write";
    EXPECT_TRUE(expander.setValueB(0, 0, false)) << "needs no write";
    EXPECT_TRUE(expander.writeDataRegisters()) << "has nothing to write";
    EXPECT_THAT(chip.calls, IsEmpty());
}

TEST_F(Sx1509bTest, InitSelectsTheSlaveAndReadsDataThenDirections) {
    Sx1509b expander;
    EXPECT_EQ(0, expander.init(3, kSlave, false));
    EXPECT_THAT(chip.calls, ElementsAre("select 3e", "read16 10", "read16 0e"));
    EXPECT_EQ(1, descriptorsOn("/dev/i2c-3"));
    EXPECT_EQ("sx1509b: 3-62", expander.dbg_print());
}

TEST_F(Sx1509bTest, TheConstructorDoesTheSame) {
    const Sx1509b expander(3, kSlave, true);
    EXPECT_THAT(chip.calls, ElementsAre("select 3e", "read16 10", "read16 0e"));
    EXPECT_EQ("sx1509b: 3-62", expander.dbg_print());
}

TEST_F(Sx1509bTest, InitTellsWhatFailed) {
    const struct {
        int bus;
        std::optional<std::size_t> failing;
        int result;
    } rows[] = {{4, std::nullopt, 1}, {3, 0, 2}, {3, 1, 3}, {3, 2, 3}, {3, std::nullopt, 0}};
    for (const auto& row : rows) {
        chip.failing = row.failing;
        chip.calls.clear();
        EXPECT_EQ(row.result, Sx1509b().init(row.bus, kSlave, false)) << row.result;
    }
}

TEST_F(Sx1509bTest, AFailedInitStillTellsItsBusAndSlave) {
    Sx1509b expander;
    EXPECT_EQ(1, expander.init(-1, 0x71, false));
    EXPECT_EQ("sx1509b: -1-113", expander.dbg_print());
}

TEST_F(Sx1509bTest, OnlyASuccessfulInitFillsTheShadow) {
    Sx1509b expander = opened();
    chip.registers.fill(0x00);
    for (const std::size_t failing : {0U, 1U, 2U}) {
        chip.calls.clear();
        chip.failing = failing;
        expander.init(3, kSlave, false);
    }
    chip.calls.clear();
    chip.failing.reset();
    EXPECT_TRUE(expander.reinitRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write16 0e=fff0", "write16 10=3ca5"));
    expander.init(3, kSlave, false);
    chip.calls.clear();
    EXPECT_TRUE(expander.reinitRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write16 0e=0000", "write16 10=0000"));
}

TEST_F(Sx1509bTest, InitForgetsDeferredChanges) {
    Sx1509b expander = opened();
    expander.setValueA(0, 1, true);
    expander.setValueB(1, 1, true);
    expander.init(4, kSlave, false);
    expander.init(3, kSlave, false);
    chip.calls.clear();
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, IsEmpty());
}

TEST_F(Sx1509bTest, InputsAreReadFromTheChipEachTime) {
    Sx1509b expander = opened();
    chip.next[0x11] = {0x00, 0xFF, -1};
    EXPECT_EQ(0x00, expander.getInputA());
    EXPECT_EQ(0xFF, expander.getInputA());
    EXPECT_EQ(-1, expander.getInputA());
    chip.next[0x1A] = {0x81, -1};
    EXPECT_EQ(0x81, expander.getEvtStatusB());
    EXPECT_EQ(-1, expander.getEvtStatusB());
}

TEST_F(Sx1509bTest, AResetShowsInTheDirectionsOfEitherPort) {
    const struct {
        std::uint8_t directionsA;
        std::uint8_t directionsB;
        int result;
    } rows[] = {{0xFF, 0xF0, 0}, {0xFF, 0xFF, 1}, {0xF0, 0xF0, 1}, {0xF0, 0xFF, 1}};
    Sx1509b expander = opened();
    for (const auto& row : rows) {
        chip.registers[0x0F] = row.directionsA;
        chip.registers[0x0E] = row.directionsB;
        EXPECT_EQ(row.result, expander.detectReset());
    }
    chip.next[0x0E] = {-1};
    EXPECT_EQ(-1, expander.detectReset());
}

TEST_F(Sx1509bTest, NothingIsLogged) {
    logEverything();
    Sx1509b expander(4, kSlave, false);
    expander.setMisc(1);
    expander.reinitRegisters();
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

}  // namespace
