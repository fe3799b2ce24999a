#include "Vl/HAL/Chips/EthernetPhy88E1510.h"

#include <gmock/gmock.h>

#include <memory>

#include "Tests/HAL/Chips/RecordedMdio.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HAL::EthernetPhy88E1510;
using Valen::HAL::GenericEthernetPhy;
using enum Enums::LEDState::LEDState_T;

GenericEthernetPhy::SPEED speedOf(int number) {
    return static_cast<GenericEthernetPhy::SPEED>(number);
}

class EthernetPhy88E1510Test : public testing::Test {
protected:
    EthernetPhy88E1510Test() { phy.setMDIO(mdio); }

    const std::shared_ptr<RecordedMdio> mdio = std::make_shared<RecordedMdio>();
    EthernetPhy88E1510 phy;
};

TEST_F(EthernetPhy88E1510Test, TheDefaultsOffer10MbitAndReset) {
    unsigned bmcr = 1;
    unsigned gbcr = 1;
    unsigned anar = 1;
    phy.getDefaultRegisterValues(&bmcr, &gbcr, &anar);
    EXPECT_EQ(0x9140U, bmcr);
    EXPECT_EQ(0x0000U, gbcr);
    EXPECT_EQ(0x0841U, anar);
    EXPECT_THAT(mdio->accesses, IsEmpty());
}

TEST_F(EthernetPhy88E1510Test, ASpeedIsOfferedOnTheCopperPageAndTheResetComesLast) {
    const struct {
        int speed;
        int gbcr;
        int anar;
    } rows[] = {{1, 0x0000, 0x0841}, {2, 0x0000, 0x0941}, {3, 0x0300, 0x0941}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.speed);
        mdio->accesses.clear();
        EXPECT_TRUE(phy.setSpeed(speedOf(row.speed)));
        EXPECT_THAT(mdio->accesses,
                    ElementsAre(write(22, 0), write(9, row.gbcr), write(4, row.anar), write(0, 0x9140)));
    }
}

TEST_F(EthernetPhy88E1510Test, AnyOtherSpeedFailsWithNothingWritten) {
    for (const int speed : {0, 4, -1}) {
        EXPECT_FALSE(phy.setSpeed(speedOf(speed)));
    }
    EXPECT_THAT(mdio->accesses, IsEmpty());
}

TEST_F(EthernetPhy88E1510Test, SettingTheSpeedEndsWithTheFirstFailedWrite) {
    for (std::size_t failing = 0; failing < 4; ++failing) {
        SCOPED_TRACE(failing);
        mdio->accesses.clear();
        mdio->failing = failing;
        EXPECT_FALSE(phy.setSpeed(GenericEthernetPhy::Mbit1000));
        EXPECT_EQ(failing + 1, mdio->accesses.size());
    }
}

TEST_F(EthernetPhy88E1510Test, ASubclassMayHaveOtherDefaults) {
    class OtherDefaults : public EthernetPhy88E1510 {
    public:
        void getDefaultRegisterValues(unsigned* bmcr, unsigned* gbcr, unsigned* anar) override {
            *bmcr = 0x8000;
            *gbcr = 0x0400;
            *anar = 0x0001;
        }
    };
    OtherDefaults other;
    other.setMDIO(mdio);
    EXPECT_TRUE(other.setSpeed(GenericEthernetPhy::Mbit1000));
    EXPECT_THAT(mdio->accesses,
                ElementsAre(write(22, 0), write(9, 0x0700), write(4, 0x0101), write(0, 0x8000)));
}

TEST_F(EthernetPhy88E1510Test, TheLinksSpeedIsInTheTopBitsOfRegister17OfTheCopperPage) {
    const struct {
        int status;
        int speed;
    } rows[] = {{0x0000, 1}, {0x3FFF, 1}, {0x4000, 2}, {0x8000, 3}, {0xBC02, 3}, {0xC000, 0}, {0xFFFF, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.status);
        mdio->accesses.clear();
        mdio->registers[17] = row.status;
        EXPECT_EQ(row.speed, phy.getLinkSpeed());
        EXPECT_THAT(mdio->accesses, ElementsAre(write(22, 0), read(17, row.status)));
    }
}

TEST_F(EthernetPhy88E1510Test, ALinkWhoseStatusCannotBeReadHasNoSpeed) {
    mdio->failing = 0;
    EXPECT_EQ(0, phy.getLinkSpeed());
    EXPECT_THAT(mdio->accesses, ElementsAre(write(22, 0)));
    mdio->failing = 2;
    EXPECT_EQ(0, phy.getLinkSpeed());
}

TEST_F(EthernetPhy88E1510Test, LedValuesFollowBothStates) {
    const struct {
        int a;
        int b;
        unsigned value;
    } rows[] = {
        {0, 0, 0x0888}, {1, 0, 0x0988}, {2, 0, 0x0888}, {3, 0, 0x0888}, {0, 1, 0x0889},  {1, 1, 0x0989},
        {2, 1, 0x0889}, {3, 1, 0x0889}, {0, 2, 0x0898}, {1, 2, 0x0998}, {2, 2, 0x0898},  {3, 2, 0x0898},
        {0, 3, 0x0898}, {1, 3, 0x0998}, {2, 3, 0x0898}, {3, 3, 0x0898}, {1, -1, 0x0988},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.a << ", " << row.b);
        EXPECT_EQ(row.value, EthernetPhy88E1510::getLEDs(static_cast<Enums::LEDState::LEDState_T>(row.a),
                                                         static_cast<Enums::LEDState::LEDState_T>(row.b)));
    }
}

TEST_F(EthernetPhy88E1510Test, LedsAreWrittenOnTheirPage) {
    EXPECT_TRUE(phy.setLeds(FirstColour, SecondColour));
    EXPECT_THAT(mdio->accesses, ElementsAre(write(22, 3), write(16, 0x0998), write(22, 0)));
}

TEST_F(EthernetPhy88E1510Test, TheSameLedsAgainCostNoAccess) {
    EXPECT_TRUE(phy.setLeds(FirstColour, SecondColour));
    mdio->accesses.clear();
    EXPECT_TRUE(phy.setLeds(FirstColour, SecondColour));
    EXPECT_TRUE(phy.setLeds(FirstColour, BothColours));  // looks the same
    EXPECT_THAT(mdio->accesses, IsEmpty());
    EXPECT_TRUE(phy.setLeds(Off, SecondColour));
    EXPECT_THAT(mdio->accesses, ElementsAre(write(22, 3), write(16, 0x0898), write(22, 0)));
}

TEST_F(EthernetPhy88E1510Test, TheFirstRequestIsWrittenWhateverItIs) {
    EXPECT_TRUE(phy.setLeds(Off, Off));
    EXPECT_THAT(mdio->accesses, ElementsAre(write(22, 3), write(16, 0x0888), write(22, 0)));
}

TEST_F(EthernetPhy88E1510Test, LedsThatFailedAreNotWrittenAgainOnPurpose) {
    mdio->failing = 1;
    EXPECT_FALSE(phy.setLeds(Off, Off));
    mdio->accesses.clear();
    mdio->failing = RecordedMdio::kNone;
    EXPECT_TRUE(phy.setLeds(Off, Off));
    EXPECT_THAT(mdio->accesses, IsEmpty());
}

TEST_F(EthernetPhy88E1510Test, SettingTheLedsEndsWithTheFirstFailedWrite) {
    for (std::size_t failing = 0; failing < 3; ++failing) {
        SCOPED_TRACE(failing);
        EthernetPhy88E1510 fresh;
        fresh.setMDIO(mdio);
        mdio->accesses.clear();
        mdio->failing = failing;
        EXPECT_FALSE(fresh.setLeds(Off, Off));
        EXPECT_EQ(failing + 1, mdio->accesses.size());
    }
}

TEST_F(EthernetPhy88E1510Test, AsUserPortItsLedsGoOff) {
    EXPECT_TRUE(phy.initUserEth());
    EXPECT_THAT(mdio->accesses, ElementsAre(write(22, 3), write(16, 0x0888), write(22, 0)));
    EXPECT_TRUE(phy.initUserEth());
    EXPECT_EQ(3U, mdio->accesses.size());
}

TEST_F(EthernetPhy88E1510Test, HasNothingToStartAndCannotTellWhetherThereIsALink) {
    EXPECT_FALSE(phy.initPhy());
    EXPECT_FALSE(phy.getLinkUp());
    EXPECT_THAT(mdio->accesses, IsEmpty());
}

}  // namespace
