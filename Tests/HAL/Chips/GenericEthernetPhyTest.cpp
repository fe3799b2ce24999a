#include "Vl/HAL/Chips/GenericEthernetPhy.h"

#include <gmock/gmock.h>

#include <memory>

#include "Tests/HAL/Chips/RecordedMdio.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Valen::HAL::GenericEthernetPhy;

class GenericEthernetPhyTest : public testing::Test {
protected:
    const std::shared_ptr<RecordedMdio> mdio = std::make_shared<RecordedMdio>();
    GenericEthernetPhy phy;
};

TEST_F(GenericEthernetPhyTest, TheIdentifierIsInRegistersTwoAndThree) {
    phy.setMDIO(mdio);
    mdio->registers = {{2, 0x2000}, {3, 0xA231}};
    EXPECT_EQ(0x2000, phy.getPhyId1());
    EXPECT_EQ(0xA231, phy.getPhyId2());
    EXPECT_THAT(mdio->accesses, ElementsAre(read(2, 0x2000), read(3, 0xA231)));
}

TEST_F(GenericEthernetPhyTest, AnIdentifierThatCannotBeReadIsMinusOne) {
    phy.setMDIO(mdio);
    mdio->failing = 0;
    EXPECT_EQ(-1, phy.getPhyId1());
}

TEST_F(GenericEthernetPhyTest, EveryOperationDoesNothingAndFails) {
    phy.setMDIO(mdio);
    EXPECT_FALSE(phy.initPhy());
    EXPECT_FALSE(phy.getLinkUp());
    EXPECT_EQ(0, phy.getLinkSpeed());
    EXPECT_FALSE(phy.setSpeed(GenericEthernetPhy::Mbit1000));
    EXPECT_FALSE(phy.setLeds(Enums::LEDState::Off, Enums::LEDState::Off));
    EXPECT_FALSE(phy.initUserEth());
    EXPECT_THAT(mdio->accesses, IsEmpty());
}

TEST_F(GenericEthernetPhyTest, WithoutAnAccessorThereIsNoIdentifier) {
    EXPECT_EQ(-1, phy.getPhyId1());
    EXPECT_EQ(-1, phy.getPhyId2());
}

TEST_F(GenericEthernetPhyTest, TheAccessorIsSharedAndCanBeChanged) {
    phy.setMDIO(mdio);
    EXPECT_EQ(2, mdio.use_count());
    phy.setMDIO(nullptr);
    EXPECT_EQ(1, mdio.use_count());
    EXPECT_EQ(-1, phy.getPhyId1());
}

TEST_F(GenericEthernetPhyTest, SpeedsAreNumberedFromUnknownUp) {
    EXPECT_EQ(0, GenericEthernetPhy::Unknown);
    EXPECT_EQ(1, GenericEthernetPhy::Mbit10);
    EXPECT_EQ(2, GenericEthernetPhy::Mbit100);
    EXPECT_EQ(3, GenericEthernetPhy::Mbit1000);
}

}  // namespace
