#include "Vl/HAL/Fpga/cpld.h"

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/LayoutBytes.h"

namespace {

namespace cpld = Valen::HAL::cpld;

using testing::ElementsAre;

class cpldTest : public BoardWorld {};

TEST_F(cpldTest, KnowsItsNames) {
    EXPECT_STREQ("cpld", cpld::deviceName);
    EXPECT_STREQ("bus_breakout", cpld::bus_breakout_name);
}

TEST_F(cpldTest, IsOfTypeZeroWithABusBreakout) {
    writeLayout("cpld", core("cardid", {1, 0x40}) + core("bus_breakout", {1, 0x80}));
    EXPECT_EQ(0, cpld::getType());
}

TEST_F(cpldTest, IsOfTypeZeroAlsoWhenTheBusBreakoutHasNoAddress) {
    writeLayout("cpld", core("bus_breakout", {1}));
    EXPECT_EQ(0, cpld::getType());
}

TEST_F(cpldTest, IsOfTypeOneWithoutABusBreakout) {
    writeLayout("cpld", core("cardid", {1, 0x40}) + core("bus_breakout2", {1, 0x80}));
    EXPECT_EQ(1, cpld::getType());
}

TEST_F(cpldTest, IsOfTypeOneWithoutALayout) {
    EXPECT_EQ(1, cpld::getType());
    EXPECT_THAT(syslog.lines(),
                ElementsAre(error("CPCardInterface: could not find: /sys/bus/avalon/devices/cpld/layout")));
}

TEST_F(cpldTest, IsAlwaysValidWhateverIsAskedOfIt) {
    EXPECT_TRUE(cpld::getValidBit());
    cpld::invalidate();
    cpld::setFpgaReloadBit();
    EXPECT_TRUE(cpld::getValidBit());
}

}  // namespace
