#include "Tools/boardsim/Models/PatternPort.h"

#include <gmock/gmock.h>

namespace {

using boardsim::PatternPort;
using testing::ElementsAre;

TEST(PatternPortTest, NoLaneSendsAPatternAfterPowerOn) {
    EXPECT_THAT(PatternPort(8).lanesOn(), ElementsAre());
}

TEST(PatternPortTest, LanesAreSwitchedOnAndOff) {
    PatternPort port(8);
    EXPECT_EQ(std::errc{}, port.setPattern(7, true));
    EXPECT_EQ(std::errc{}, port.setPattern(2, true));
    EXPECT_EQ(std::errc{}, port.setPattern(2, true));
    EXPECT_THAT(port.lanesOn(), ElementsAre(2, 7));
    EXPECT_EQ(std::errc{}, port.setPattern(7, false));
    EXPECT_EQ(std::errc{}, port.setPattern(7, false));
    EXPECT_THAT(port.lanesOn(), ElementsAre(2));
}

TEST(PatternPortTest, ALaneThatIsNotThereIsAnInvalidArgument) {
    PatternPort port(8);
    EXPECT_EQ(std::errc::invalid_argument, port.setPattern(8, true));
    EXPECT_EQ(std::errc::invalid_argument, port.setPattern(~0U, false));
    EXPECT_THAT(port.lanesOn(), ElementsAre());
}

}  // namespace
