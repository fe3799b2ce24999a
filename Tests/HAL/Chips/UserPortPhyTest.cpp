#include <gmock/gmock.h>

#include <memory>

#include "Tests/HAL/Chips/RecordedMdio.h"
#include "Vl/HAL/Chips/EthernetPhy88E1510.h"
#include "Vl/HAL/Chips/EthernetPhyDP83867IS.h"

namespace {

using Enums::LEDState::LEDState_T;

/// What every chip does that can be the user port's PHY.
template <typename Phy>
class UserPortPhyTest : public testing::Test {};

using Phys = testing::Types<Valen::HAL::EthernetPhy88E1510, Valen::HAL::EthernetPhyDP83867IS>;
TYPED_TEST_SUITE(UserPortPhyTest, Phys, );

TYPED_TEST(UserPortPhyTest, ASubclassShowsTheUserPortsLedsItsOwnWay) {
    class OtherLeds : public TypeParam {
    public:
        bool setLeds(LEDState_T a, LEDState_T b) override { return a == 0 && b == 0 && this->setReg(24, 7); }
    };
    const auto mdio = std::make_shared<RecordedMdio>();
    OtherLeds phy;
    phy.setMDIO(mdio);
    EXPECT_TRUE(phy.initUserEth());
    EXPECT_EQ(write(24, 7), mdio->accesses.back());
    EXPECT_EQ(0U, mdio->registers.count(16) + mdio->registers.count(25)) << "the chips' own LEDs";
}

TYPED_TEST(UserPortPhyTest, WithoutAnAccessorEverythingFails) {
    using Speed = Valen::HAL::GenericEthernetPhy::SPEED;
    TypeParam phy;
    EXPECT_FALSE(phy.initPhy());
    EXPECT_FALSE(phy.getLinkUp());
    EXPECT_EQ(0, phy.getLinkSpeed());
    EXPECT_FALSE(phy.setSpeed(Speed{1}));
    EXPECT_FALSE(phy.setLeds(LEDState_T{0}, LEDState_T{0}));
    EXPECT_EQ(-1, phy.getPhyId1());
    TypeParam other;
    EXPECT_FALSE(other.initUserEth());
}

}  // namespace
