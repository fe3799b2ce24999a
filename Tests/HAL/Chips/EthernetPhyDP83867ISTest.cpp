#include "Vl/HAL/Chips/EthernetPhyDP83867IS.h"

#include <gmock/gmock.h>

#include <memory>

#include "Tests/HAL/Chips/RecordedMdio.h"

namespace {

using testing::ElementsAre;
using Valen::HAL::EthernetPhyDP83867IS;
using Valen::HAL::GenericEthernetPhy;
using enum Enums::LEDState::LEDState_T;

class EthernetPhyDP83867ISTest : public testing::Test {
protected:
    EthernetPhyDP83867ISTest() { phy.setMDIO(mdio); }

    const std::shared_ptr<RecordedMdio> mdio = std::make_shared<RecordedMdio>();
    EthernetPhyDP83867IS phy;
};

TEST_F(EthernetPhyDP83867ISTest, TheExtendedRegisterIsReadAndWrittenThroughRegisters13And14) {
    EXPECT_TRUE(phy.initPhy());
    // A plain register keeps the extended register's number as its value.
    EXPECT_THAT(mdio->accesses, ElementsAre(write(13, 0x001F), write(14, 0x016F), write(13, 0x401F),
                                            read(14, 0x016F), write(14, 0x016F), write(13, 0)));
}

/// An accessor whose register 14 reads as a value of its own.
class ExtendedValue : public RecordedMdio {
public:
    int getReg(int reg) override {
        registers[14] = 0xFFFF;
        return RecordedMdio::getReg(reg);
    }
};

TEST_F(EthernetPhyDP83867ISTest, StartingClearsBitSevenOfTheExtendedRegisterAndNoOther) {
    const auto extended = std::make_shared<ExtendedValue>();
    phy.setMDIO(extended);
    EXPECT_TRUE(phy.initPhy());
    ASSERT_EQ(6U, extended->accesses.size());
    EXPECT_EQ(read(14, 0xFFFF), extended->accesses[3]);
    EXPECT_EQ(write(14, 0xFF7F), extended->accesses[4]);
}

TEST_F(EthernetPhyDP83867ISTest, AFailedSelectionStillReadsAndDeselectsOnPurpose) {
    mdio->failing = 0;
    EXPECT_FALSE(phy.initPhy());
    EXPECT_THAT(mdio->accesses, ElementsAre(write(13, 0x001F), read(14, 0), write(13, 0)));
    mdio->accesses.clear();
    mdio->failing = 1;
    EXPECT_FALSE(phy.initPhy());
    EXPECT_THAT(mdio->accesses, ElementsAre(write(13, 0x001F), write(14, 0x016F), read(14, 0), write(13, 0)));
    mdio->accesses.clear();
    mdio->failing = 2;
    EXPECT_FALSE(phy.initPhy());
    EXPECT_THAT(mdio->accesses, ElementsAre(write(13, 0x001F), write(14, 0x016F), write(13, 0x401F),
                                            read(14, 0x016F), write(13, 0)));
}

TEST_F(EthernetPhyDP83867ISTest, AFailedReadOfTheExtendedRegisterChangesNothing) {
    mdio->failing = 3;
    EXPECT_FALSE(phy.initPhy());
    EXPECT_THAT(mdio->accesses, ElementsAre(write(13, 0x001F), write(14, 0x016F), write(13, 0x401F),
                                            read(14, -1), write(13, 0)));
}

TEST_F(EthernetPhyDP83867ISTest, StartingSucceedsWhenTheExtendedRegisterIsWritten) {
    mdio->failing = 4;
    EXPECT_FALSE(phy.initPhy());
    EXPECT_EQ(write(13, 0), mdio->accesses.back());
    mdio->accesses.clear();
    mdio->failing = 5;
    EXPECT_TRUE(phy.initPhy());
}

TEST_F(EthernetPhyDP83867ISTest, TheLinksSpeedIsInTheTopBitsOfRegister17) {
    const struct {
        int status;
        int speed;
    } rows[] = {{0x0000, 1}, {0x3FFF, 1}, {0x4000, 2}, {0x8000, 3}, {0xBC02, 3}, {0xC000, 0}, {0xFFFF, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.status);
        mdio->registers[17] = row.status;
        EXPECT_EQ(row.speed, phy.getLinkSpeed());
    }
    EXPECT_EQ(read(17, 0), mdio->accesses.front());
    EXPECT_EQ(7U, mdio->accesses.size());
}

TEST_F(EthernetPhyDP83867ISTest, ALinkWhoseStatusCannotBeReadHasNoSpeed) {
    mdio->failing = 0;
    EXPECT_EQ(0, phy.getLinkSpeed());
}

TEST_F(EthernetPhyDP83867ISTest, ASpeedIsOfferedBetweenStoppingAndRestartingAutoNegotiation) {
    const struct {
        int speed;
        int gbcr;
        int anar;
    } rows[] = {{1, 0x0000, 0x0061}, {2, 0x0000, 0x03E1}, {3, 0x0380, 0x03E1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.speed);
        mdio->accesses.clear();
        mdio->registers[0] = 0x1140;
        EXPECT_TRUE(phy.setSpeed(static_cast<GenericEthernetPhy::SPEED>(row.speed)));
        EXPECT_THAT(mdio->accesses, ElementsAre(read(0, 0x1140), write(0, 0x0140), write(9, row.gbcr),
                                                write(4, row.anar), read(0, 0x0140), write(0, 0x1340)));
    }
}

TEST_F(EthernetPhyDP83867ISTest, AnyOtherSpeedLeavesNothingOnOffer) {
    for (const int speed : {0, 4, -1, 7}) {
        SCOPED_TRACE(speed);
        mdio->registers = {{4, 0xFFFF}, {9, 0xFFFF}};
        EXPECT_TRUE(phy.setSpeed(static_cast<GenericEthernetPhy::SPEED>(speed)));
        EXPECT_EQ(0x0000, mdio->registers[9]);
        EXPECT_EQ(0x0001, mdio->registers[4]);
    }
}

TEST_F(EthernetPhyDP83867ISTest, TheOtherControlBitsStay) {
    mdio->registers[0] = 0xFFFF;
    EXPECT_TRUE(phy.setSpeed(GenericEthernetPhy::Mbit10));
    EXPECT_EQ(write(0, 0xEFFF), mdio->accesses[1]);
    EXPECT_EQ(write(0, 0xFFFF), mdio->accesses[5]);
}

TEST_F(EthernetPhyDP83867ISTest, SettingTheSpeedEndsWithTheFirstFailedAccess) {
    for (std::size_t failing = 0; failing < 6; ++failing) {
        SCOPED_TRACE(failing);
        mdio->accesses.clear();
        mdio->failing = failing;
        EXPECT_FALSE(phy.setSpeed(GenericEthernetPhy::Mbit1000));
        EXPECT_EQ(failing + 1, mdio->accesses.size());
    }
}

TEST_F(EthernetPhyDP83867ISTest, LedsAreOneWriteOfRegister25) {
    const struct {
        int a;
        int b;
        int value;
    } rows[] = {
        {0, 0, 0x0555}, {1, 0, 0x0557}, {2, 0, 0x0555}, {3, 0, 0x0555}, {0, 1, 0x0755},  {1, 1, 0x0757},
        {2, 1, 0x0755}, {3, 1, 0x0755}, {0, 2, 0x0575}, {1, 2, 0x0577}, {2, 2, 0x0575},  {3, 2, 0x0575},
        {0, 3, 0x0575}, {1, 3, 0x0577}, {2, 3, 0x0575}, {3, 3, 0x0575}, {1, -1, 0x0557},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.a << ", " << row.b);
        mdio->accesses.clear();
        EXPECT_TRUE(phy.setLeds(static_cast<Enums::LEDState::LEDState_T>(row.a),
                                static_cast<Enums::LEDState::LEDState_T>(row.b)));
        EXPECT_THAT(mdio->accesses, ElementsAre(write(25, row.value)));
    }
    mdio->failing = 1;
    EXPECT_FALSE(phy.setLeds(Off, Off));
}

TEST_F(EthernetPhyDP83867ISTest, AsUserPortItIsStartedAndItsLedsGoOff) {
    EXPECT_TRUE(phy.initUserEth());
    ASSERT_EQ(7U, mdio->accesses.size());
    EXPECT_EQ(write(13, 0x001F), mdio->accesses[0]);
    EXPECT_EQ(write(25, 0x0555), mdio->accesses[6]);
}

TEST_F(EthernetPhyDP83867ISTest, AUserPortThatDoesNotStartKeepsItsLeds) {
    mdio->failing = 0;
    EXPECT_FALSE(phy.initUserEth());
    EXPECT_EQ(0U, mdio->registers.count(25));
}

TEST_F(EthernetPhyDP83867ISTest, AUserPortWhoseLedsFailFails) {
    mdio->failing = 6;
    EXPECT_FALSE(phy.initUserEth());
}

}  // namespace
