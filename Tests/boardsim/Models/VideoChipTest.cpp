#include "Tools/boardsim/Models/VideoChip.h"

#include <gmock/gmock.h>

#include "Tests/boardsim/Models/I2cChip.h"

namespace {

using boardsim::VideoChip;
using testing::ElementsAre;

TEST(VideoChipTest, RegistersKeepWhatIsWritten) {
    VideoChip chip;
    models::I2cChipUser user(chip);
    EXPECT_TRUE(user.write({0x10, 1, 2, 3}));
    EXPECT_THAT(user.read({0x0F}, 5), ElementsAre(0, 1, 2, 3, 0));
    EXPECT_EQ(2, chip.at(0x11));
}

TEST(VideoChipTest, RegisterZeroFollowsTheLast) {
    VideoChip chip;
    models::I2cChipUser user(chip);
    EXPECT_TRUE(user.write({0xFF, 1, 2}));
    EXPECT_EQ(1, chip.at(0xFF));
    EXPECT_EQ(2, chip.at(0x00));
}

TEST(VideoChipTest, HasItsResetValuesAgainWhenPowerWasLost) {
    VideoChip chip({{0x02, 0x20}});
    models::I2cChipUser user(chip);
    user.write({0x01, 9, 9});
    chip.losePower();
    EXPECT_THAT(user.read(3), ElementsAre(0, 0, 0x20)) << "the register number is 0, too";
}

}  // namespace
