#include "Tools/boardsim/Models/I2cEeprom.h"

#include <gmock/gmock.h>

#include "Tests/boardsim/Models/I2cChip.h"

namespace {

using boardsim::EepromGeometry;
using boardsim::I2cEeprom;
using namespace std::chrono_literals;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

/// A 24C64 and its user, with a clock that the test turns.
class I2cEepromTest : public testing::Test {
protected:
    void wait(std::chrono::milliseconds time) { now += time; }
    void writeAndWait(std::vector<std::uint8_t> bytes) {
        EXPECT_TRUE(user.write(std::move(bytes)));
        wait(5ms);
    }

    std::chrono::steady_clock::time_point now{1h};
    I2cEeprom chip{EepromGeometry{8192, 32, 2}, [this] { return now; }};
    models::I2cChipUser user{chip};
};

TEST_F(I2cEepromTest, IsErasedWhenNew) {
    EXPECT_THAT(user.read({0, 0}, 8192), Each(0xFF));
}

TEST_F(I2cEepromTest, IsReadFromAnAddressOn) {
    chip.fill("identity");
    EXPECT_THAT(user.read({0, 2}, 3), ElementsAre('e', 'n', 't'));
    EXPECT_THAT(user.read(2), ElementsAre('i', 't'));
}

TEST_F(I2cEepromTest, ReadingGoesAroundTheWholeMemory) {
    chip.fill("a");
    EXPECT_THAT(user.read({0x1F, 0xFF}, 2), ElementsAre(0xFF, 'a'));
    EXPECT_THAT(user.read({0xE0, 0x00}, 1), ElementsAre('a')) << "the three highest bits mean nothing";
}

TEST_F(I2cEepromTest, WritesBytesOneBehindTheOther) {
    writeAndWait({0x01, 0x02, 10, 11, 12});
    EXPECT_EQ(10, chip.at(0x102));
    EXPECT_THAT(user.read({0x01, 0x02}, 4), ElementsAre(10, 11, 12, 0xFF));
}

TEST_F(I2cEepromTest, AWriteWrapsToTheStartOfItsPage) {
    writeAndWait({0x00, 0x3E, 1, 2, 3, 4});
    EXPECT_THAT(user.read({0x00, 0x3E}, 2), ElementsAre(1, 2));
    EXPECT_THAT(user.read({0x00, 0x20}, 3), ElementsAre(3, 4, 0xFF));
    EXPECT_EQ(0xFF, chip.at(0x40));
}

TEST_F(I2cEepromTest, DoesNotAnswerWhileItPrograms) {
    EXPECT_TRUE(user.write({0, 0, 1}));
    EXPECT_FALSE(user.write({0, 0}));
    wait(4ms);
    EXPECT_THAT(user.read({0, 0}, 1), IsEmpty());
    wait(1ms);
    EXPECT_THAT(user.read({0, 0}, 1), ElementsAre(1));
}

TEST_F(I2cEepromTest, AnAddressAloneProgramsNothing) {
    EXPECT_TRUE(user.write({0, 0}));
    EXPECT_TRUE(user.write({0, 0}));
}

TEST_F(I2cEepromTest, DataBeforeARepeatedStartAreForgotten) {
    EXPECT_THAT(user.read({0, 0, 55}, 1), ElementsAre(0xFF));
    EXPECT_EQ(0xFF, chip.at(0));
}

TEST_F(I2cEepromTest, SurvivesALossOfPower) {
    writeAndWait({0, 0, 1});
    EXPECT_TRUE(user.write({0, 1, 2}));
    chip.losePower();
    EXPECT_THAT(user.read({0, 0}, 2), ElementsAre(1, 2));
}

TEST_F(I2cEepromTest, ContentsThatDoNotFitAreLeftOut) {
    chip.fill(std::string(8191, 'x') + "yz");
    EXPECT_THAT(user.read({0x1F, 0xFE}, 3), ElementsAre('x', 'y', 'x'));
}

TEST(SmallI2cEepromTest, HasAddressesOfOneByte) {
    I2cEeprom chip(EepromGeometry{256, 8, 1});
    models::I2cChipUser user(chip);
    EXPECT_TRUE(user.write({0xFE, 1, 2, 3}));
    EXPECT_EQ(1, chip.at(0xFE));
    EXPECT_EQ(2, chip.at(0xFF));
    EXPECT_EQ(3, chip.at(0xF8));
}

}  // namespace
