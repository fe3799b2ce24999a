#include "Vl/HAL/Chips/Sx1509b.h"

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/Bus/I2cCalls.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Valen::Sx1509b;

constexpr std::uint8_t kSlave = 0x3E;

/// A chip at 0x3E on bus 3 whose registers all differ, and whose inputs A and B read 0x3C and 0xA5.
class Sx1509bTest : public BoardWorld {
protected:
    Sx1509bTest() {
        support::PrivateWorld::write("/dev/i2c-3", "");
        chip.registers[0x0E] = 0xF0;
        chip.registers[0x0F] = 0xFF;
        chip.registers[0x10] = 0xA5;
        chip.registers[0x11] = 0x3C;
    }

    /// An expander that is ready, with what that took forgotten.
    Sx1509b opened() {
        Sx1509b expander(3, kSlave, false);
        chip.calls.clear();
        return expander;
    }

    I2cCalls chip;
};

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

/// An operation of a chip that is open, and the transfers it is made of.
struct Operation {
    const char* name;
    std::function<bool(Sx1509b&)> run;
    std::vector<std::string> transfers;
};

const Operation kOperations[] = {
    {"setValueA low to high", [](Sx1509b& x) { return x.setValueA(0, 1, false); }, {"write8 11=3d"}},
    {"setValueA high to low", [](Sx1509b& x) { return x.setValueA(2, 0, false); }, {"write8 11=38"}},
    {"setValueA any value", [](Sx1509b& x) { return x.setValueA(7, 0x80, false); }, {"write8 11=bc"}},
    {"setValueB low to high", [](Sx1509b& x) { return x.setValueB(6, 2, false); }, {"write8 10=e5"}},
    {"setValueB high to low", [](Sx1509b& x) { return x.setValueB(7, 0, false); }, {"write8 10=25"}},
    {"setAOutputs low",
     [](Sx1509b& x) { return x.setAOutputs(0x30, 0x00); },
     {"write8 11=0c", "write8 0f=cf"}},
    {"setAOutputs mixed",
     [](Sx1509b& x) { return x.setAOutputs(0x0F, 0x03); },
     {"write8 11=33", "write8 0f=f0"}},
    {"setAOutputs none", [](Sx1509b& x) { return x.setAOutputs(0, 0); }, {"write8 11=3c", "write8 0f=ff"}},
    {"setBOutputs", [](Sx1509b& x) { return x.setBOutputs(0x30, 0x10); }, {"write8 10=95", "write8 0e=c0"}},
    {"setADirection",
     [](Sx1509b& x) { return x.setADirection(0x12, 0x34); },
     {"write8 11=34", "write8 0f=12"}},
    {"setBDirection",
     [](Sx1509b& x) { return x.setBDirection(0x12, 0x34); },
     {"write8 10=34", "write8 0e=12"}},
    {"setInADisable", [](Sx1509b& x) { return x.setInADisable(0x81); }, {"write8 01=81"}},
    {"setInBDisable", [](Sx1509b& x) { return x.setInBDisable(0x82); }, {"write8 00=82"}},
    {"setAOpenDrain", [](Sx1509b& x) { return x.setAOpenDrain(0x83); }, {"write8 0b=83"}},
    {"setBOpenDrain", [](Sx1509b& x) { return x.setBOpenDrain(0x84); }, {"write8 0a=84"}},
    {"setLedAEnable", [](Sx1509b& x) { return x.setLedAEnable(0x85); }, {"write8 21=85"}},
    {"setLedBEnable", [](Sx1509b& x) { return x.setLedBEnable(0x86); }, {"write8 20=86"}},
    {"setSenseHighB", [](Sx1509b& x) { return x.setSenseHighB(0x87); }, {"write8 14=87"}},
    {"setEvtStatusB", [](Sx1509b& x) { return x.setEvtStatusB(0x88); }, {"write8 1a=88"}},
    {"setClock", [](Sx1509b& x) { return x.setClock(0x89); }, {"write8 1e=89"}},
    {"setMisc", [](Sx1509b& x) { return x.setMisc(0x8A); }, {"write8 1f=8a"}},
    {"setIOnX", [](Sx1509b& x) { return x.setIOnX(15, 0x8B); }, {"write8 65=8b"}},
    {"getInputA", [](Sx1509b& x) { return x.getInputA() == 0x3C; }, {"read8 11"}},
    {"getInputB", [](Sx1509b& x) { return x.getInputB() == 0xA5; }, {"read8 10"}},
    {"getEvtStatusB", [](Sx1509b& x) { return x.getEvtStatusB() == 0; }, {"read8 1a"}},
    {"detectReset", [](Sx1509b& x) { return x.detectReset() == 0; }, {"read16 0e"}},
    {"reinitRegisters",
     [](Sx1509b& x) { return x.reinitRegisters(); },
     {"write16 0e=fff0", "write16 10=3ca5"}},
    {"deferred A",
     [](Sx1509b& x) { return x.setValueA(0, 1, true) && x.writeDataRegisters(); },
     {"write8 11=3d"}},
    {"deferred B",
     [](Sx1509b& x) { return x.setValueB(1, 1, true) && x.writeDataRegisters(); },
     {"write8 10=a7"}},
    {"deferred A and B",
     [](Sx1509b& x) {
         return x.setValueA(0, 1, true) && x.setValueA(1, 1, true) && x.setValueB(1, 1, true) &&
                x.writeDataRegisters();
     },
     {"write16 10=3fa7"}},
};

TEST_F(Sx1509bTest, EveryOperationMakesItsTransfers) {
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        Sx1509b expander = opened();
        EXPECT_TRUE(operation.run(expander));
        EXPECT_THAT(chip.calls, ElementsAreArray(operation.transfers));
    }
}

TEST_F(Sx1509bTest, EveryOperationStopsAtTheTransferThatFails) {
    for (const Operation& operation : kOperations) {
        for (std::size_t failing = 0; failing < operation.transfers.size(); ++failing) {
            SCOPED_TRACE(operation.name + std::to_string(failing));
            chip.failing.reset();
            Sx1509b expander = opened();
            chip.failing = failing;
            EXPECT_FALSE(operation.run(expander));
            EXPECT_THAT(chip.calls, ElementsAreArray(operation.transfers.data(), failing + 1));
        }
    }
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

TEST_F(Sx1509bTest, ALevelThatIsInTheShadowIsNotWritten) {
    Sx1509b expander = opened();
    EXPECT_TRUE(expander.setValueA(2, 1, false));
    EXPECT_TRUE(expander.setValueA(0, 0, false));
    EXPECT_TRUE(expander.setValueB(0, 7, false));
    EXPECT_TRUE(expander.setValueA(2, 1, true));
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, IsEmpty());
}

TEST_F(Sx1509bTest, ADeferredLevelIsInTheShadowAndThusNotWrittenAtOnceOnPurpose) {
    Sx1509b expander = opened();
    EXPECT_TRUE(expander.setValueA(0, 1, true));
    EXPECT_TRUE(expander.setValueA(0, 1, false));
    EXPECT_THAT(chip.calls, IsEmpty());
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=3d"));
}

TEST_F(Sx1509bTest, ThereIsNoPinAboveSeven) {
    Sx1509b expander = opened();
    for (const std::uint8_t pin : std::initializer_list<std::uint8_t>{8, 31, 32, 255}) {
        EXPECT_TRUE(expander.setValueA(pin, 1, false));
        EXPECT_TRUE(expander.setValueB(pin, 1, true));
    }
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, IsEmpty());
}

TEST_F(Sx1509bTest, ChangesOfOnePortLeaveTheOtherAlone) {
    Sx1509b expander = opened();
    expander.setAOutputs(0xFF, 0x00);
    expander.setBOutputs(0xFF, 0xFF);
    chip.calls.clear();
    EXPECT_TRUE(expander.reinitRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write16 0e=0000", "write16 10=00ff"));
}

TEST_F(Sx1509bTest, ValuesOutsideTheMaskAreSetTooOnPurpose) {
    Sx1509b expander = opened();
    EXPECT_TRUE(expander.setAOutputs(0x01, 0x81));
    EXPECT_TRUE(expander.setBOutputs(0x00, 0x42));
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=bd", "write8 0f=fe", "write8 10=e7", "write8 0e=f0"));
}

TEST_F(Sx1509bTest, OutputsOfAFreshChipLeaveTheOtherPinsInputs) {
    Sx1509b expander = opened();
    EXPECT_TRUE(expander.setAOutputs(0x30, 0x00));
    chip.registers[0x0F] = 0xCF;
    EXPECT_EQ(0, expander.detectReset());
    chip.registers[0x0F] = 0xFF;
    EXPECT_EQ(1, expander.detectReset());
}

TEST_F(Sx1509bTest, EachIOHasItsIntensityRegister) {
    Sx1509b expander = opened();
    for (std::uint8_t io = 0; io < 16; ++io) {
        EXPECT_TRUE(expander.setIOnX(io, 0x7F));
    }
    EXPECT_THAT(chip.calls, ElementsAre("write8 2a=7f", "write8 2d=7f", "write8 30=7f", "write8 33=7f",
                                        "write8 36=7f", "write8 3b=7f", "write8 40=7f", "write8 45=7f",
                                        "write8 4a=7f", "write8 4d=7f", "write8 50=7f", "write8 53=7f",
                                        "write8 56=7f", "write8 5b=7f", "write8 60=7f", "write8 65=7f"));
    EXPECT_THAT(Sx1509b::regIonXAddress, ElementsAre(0x2A, 0x2D, 0x30, 0x33, 0x36, 0x3B, 0x40, 0x45, 0x4A,
                                                     0x4D, 0x50, 0x53, 0x56, 0x5B, 0x60, 0x65));
}

TEST_F(Sx1509bTest, DeferredChangesAreSentOnce) {
    Sx1509b expander = opened();
    expander.setValueA(0, 1, true);
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=3d"));
}

TEST_F(Sx1509bTest, DeferredChangesAreForgottenEvenWhenTheirWriteFails) {
    Sx1509b expander = opened();
    expander.setValueA(0, 1, true);
    expander.setValueB(1, 1, true);
    chip.failing = 0;
    EXPECT_FALSE(expander.writeDataRegisters());
    EXPECT_TRUE(expander.writeDataRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write16 10=3da7"));
}

TEST_F(Sx1509bTest, AChangeAtOnceTakesDeferredOnesOfItsPortAlong) {
    Sx1509b expander = opened();
    expander.setValueA(0, 1, true);
    expander.setValueA(1, 1, false);
    EXPECT_TRUE(expander.writeDataRegisters()) << "and again, which does no harm";
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=3f", "write8 11=3f"));
}

TEST_F(Sx1509bTest, AFailedChangeIsSentWithTheNextOne) {
    Sx1509b expander = opened();
    chip.failing = 0;
    EXPECT_FALSE(expander.setValueA(0, 1, false));
    EXPECT_TRUE(expander.setValueA(1, 1, false));
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=3d", "write8 11=3f"));
}

TEST_F(Sx1509bTest, AFailedChangeIsSentWhenTheChipIsRestored) {
    Sx1509b expander = opened();
    chip.failing = 0;
    EXPECT_FALSE(expander.setAOutputs(0x0F, 0x00));
    chip.calls.clear();
    chip.failing.reset();
    EXPECT_TRUE(expander.reinitRegisters());
    EXPECT_THAT(chip.calls, ElementsAre("write16 0e=f0f0", "write16 10=30a5"));
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
