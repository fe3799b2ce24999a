#include <functional>
#include <string>
#include <vector>

#include "Tests/HAL/Chips/Sx1509bWorld.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using Valen::Sx1509b;

class Sx1509bOperationsTest : public Sx1509bWorld {};

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

TEST_F(Sx1509bOperationsTest, EveryOperationMakesItsTransfers) {
    for (const Operation& operation : kOperations) {
        SCOPED_TRACE(operation.name);
        Sx1509b expander = opened();
        EXPECT_TRUE(operation.run(expander));
        EXPECT_THAT(chip.calls, ElementsAreArray(operation.transfers));
    }
}

TEST_F(Sx1509bOperationsTest, EveryOperationStopsAtTheTransferThatFails) {
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

TEST_F(Sx1509bOperationsTest, EachIOHasItsIntensityRegister) {
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

}  // namespace
