#include "Tools/boardsim/Models/Sx1509.h"

#include <gmock/gmock.h>

#include <set>

#include "Tests/boardsim/Models/I2cChip.h"

namespace {

using boardsim::Sx1509;
using testing::ElementsAre;
using testing::IsEmpty;

class Sx1509Test : public testing::Test {
protected:
    Sx1509 chip;
    models::I2cChipUser user{chip};
};

TEST_F(Sx1509Test, HasTheDataSheetsValuesAfterPowerOn) {
    const std::set<int> full{0x0E, 0x0F, 0x10, 0x11, 0x12, 0x13, 0x27, 0x28, 0x2A, 0x2D, 0x30, 0x33,
                             0x36, 0x3B, 0x40, 0x45, 0x4A, 0x4D, 0x50, 0x53, 0x56, 0x5B, 0x60, 0x65};
    for (int number = 0; number < 256; ++number) {
        EXPECT_EQ(full.contains(number) ? 0xFF : 0, user.get(static_cast<std::uint8_t>(number))) << number;
    }
}

TEST_F(Sx1509Test, RegistersFollowEachOther) {
    EXPECT_TRUE(user.write({0x0E, 0x12, 0x34, 0x56, 0x78}));
    EXPECT_THAT(user.read({0x0E}, 2), ElementsAre(0x12, 0x34));
    EXPECT_THAT(user.read({0x7F}, 2), ElementsAre(0, 0)) << "0 follows 0x7f";
}

TEST_F(Sx1509Test, RegMiscStopsTheCount) {
    EXPECT_TRUE(user.write({0x1F, 0x02}));
    EXPECT_TRUE(user.write({0x20, 1, 2, 3}));
    EXPECT_THAT(user.read({0x20}, 3), ElementsAre(3, 3, 3));
    EXPECT_EQ(0, user.get(0x21));
}

TEST_F(Sx1509Test, RefusesRegistersThatAreNotToBeWritten) {
    for (const std::uint8_t number :
         std::initializer_list<std::uint8_t>{0x27, 0x28, 0x6B, 0x7C, 0x7E, 0x7F, 0x80, 0xFF}) {
        EXPECT_FALSE(user.write({number, 0})) << int{number};
    }
    EXPECT_TRUE(user.write({0x6A, 0xFF}));
}

TEST_F(Sx1509Test, OutputsDriveTheirPins) {
    EXPECT_TRUE(user.write({0x0E, 0xFF, 0xFE}));  // A0
    EXPECT_EQ(0xFFFF, chip.pins());
    EXPECT_TRUE(user.write({0x11, 0xFE}));
    EXPECT_EQ(0xFFFE, chip.pins());
    chip.drive(0x0000);
    EXPECT_EQ(0x0000, chip.pins());
    EXPECT_TRUE(user.write({0x11, 0x01}));
    EXPECT_EQ(0x0001, chip.pins());
}

TEST_F(Sx1509Test, DataAreWhatThePinsAreWhateverWasWritten) {
    chip.drive(0xA55A);
    EXPECT_TRUE(user.write({0x10, 0x00, 0x00}));
    EXPECT_THAT(user.read({0x10}, 2), ElementsAre(0xA5, 0x5A));
    EXPECT_TRUE(user.write({0x0F, 0x0F}));
    EXPECT_EQ(0x0A, user.get(0x11));
}

TEST_F(Sx1509Test, AnOpenDrainOutputPullsDownOnly) {
    EXPECT_TRUE(user.write({0x0A, 0xFF, 0xFF}));
    EXPECT_TRUE(user.write({0x0E, 0x00, 0x00}));
    chip.drive(0xF0F0);
    EXPECT_EQ(0xF0F0, chip.pins());
    EXPECT_TRUE(user.write({0x10, 0x3C, 0x3C}));
    EXPECT_EQ(0x3030, chip.pins());
}

TEST_F(Sx1509Test, PolarityTurnsDataButNotPins) {
    chip.drive(0x00F0);
    EXPECT_TRUE(user.write({0x0D, 0xFF}));
    EXPECT_EQ(0x0F, user.get(0x11));
    EXPECT_TRUE(user.write({0x0F, 0x00}));
    EXPECT_TRUE(user.write({0x11, 0x01}));
    EXPECT_EQ(0x00FE, chip.pins());
    EXPECT_EQ(0x01, user.get(0x11));
}

TEST_F(Sx1509Test, ADisabledInputSeesNothing) {
    EXPECT_TRUE(user.write({0x01, 0xF0}));
    EXPECT_EQ(0x0F, user.get(0x11));
}

struct EdgeRow {
    const char* what;
    std::uint8_t senseRegister;
    std::uint8_t sense;
    std::uint16_t before;
    std::uint16_t after;
    std::uint16_t events;
};

TEST_F(Sx1509Test, EdgesAreNoticedWhereAndHowTheyAreWanted) {
    const EdgeRow rows[] = {
        {"rising, pin 15", 0x14, 0x40, 0x0000, 0xFFFF, 0x8000},
        {"falling is not rising", 0x14, 0x40, 0xFFFF, 0x0000, 0x0000},
        {"falling, pin 15", 0x14, 0x80, 0xFFFF, 0x0000, 0x8000},
        {"both, pin 12", 0x14, 0x03, 0xFFFF, 0x0000, 0x1000},
        {"pin 11", 0x15, 0x40, 0x0000, 0xFFFF, 0x0800},
        {"pin 4", 0x16, 0x01, 0x0000, 0xFFFF, 0x0010},
        {"pin 0", 0x17, 0x01, 0x0000, 0xFFFF, 0x0001},
        {"no edge", 0x17, 0xFF, 0x000F, 0x000F, 0x0000},
    };
    for (const EdgeRow& row : rows) {
        chip.losePower();
        chip.drive(row.before);
        EXPECT_TRUE(user.write({row.senseRegister, row.sense}));
        chip.drive(row.after);
        EXPECT_THAT(user.read({0x1A}, 2), ElementsAre(row.events >> 8, row.events & 0xFF)) << row.what;
    }
}

TEST_F(Sx1509Test, AnEventInterruptsUnlessMaskedUntilTheDataAreRead) {
    EXPECT_TRUE(user.write({0x14, 0xC0}));
    chip.drive(0x7FFF);
    EXPECT_FALSE(chip.interrupts()) << "masked";
    EXPECT_TRUE(user.write({0x12, 0x7F}));
    chip.drive(0xFFFF);
    EXPECT_TRUE(chip.interrupts());
    EXPECT_EQ(0x80, user.get(0x18));
    user.get(0x11);
    EXPECT_TRUE(chip.interrupts()) << "the other port";
    user.get(0x10);
    EXPECT_FALSE(chip.interrupts());
    EXPECT_EQ(0x80, user.get(0x1A)) << "the event stays";
}

TEST_F(Sx1509Test, RegMiscKeepsAnInterruptWhenTheDataAreRead) {
    EXPECT_TRUE(user.write({0x1F, 0x01}));
    EXPECT_TRUE(user.write({0x14, 0xC0}));
    EXPECT_TRUE(user.write({0x12, 0x7F}));
    chip.drive(0x7FFF);
    user.get(0x10);
    EXPECT_TRUE(chip.interrupts());
}

TEST_F(Sx1509Test, WritingOnesClearsEventsAndTheirInterrupts) {
    for (const std::uint8_t clearing : std::initializer_list<std::uint8_t>{0x18, 0x1A}) {
        chip.losePower();
        chip.drive(0xFFFF);
        EXPECT_TRUE(user.write({0x14, 0xF0}));  // pins 15 and 14
        EXPECT_TRUE(user.write({0x12, 0x00}));
        chip.drive(0x3FFF);
        EXPECT_TRUE(user.write({clearing, 0x80}));
        EXPECT_EQ(0x40, user.get(0x1A));
        EXPECT_EQ(0x40, user.get(0x18));
        EXPECT_TRUE(user.write({clearing, 0x40}));
        EXPECT_EQ(0x00, user.get(0x1A));
        EXPECT_FALSE(chip.interrupts());
    }
}

TEST_F(Sx1509Test, ANewSensitivityClearsTheEventsOfItsPins) {
    EXPECT_TRUE(user.write({0x14, 0xF0}));
    chip.drive(0x3FFF);
    EXPECT_EQ(0xC0, user.get(0x1A));
    EXPECT_TRUE(user.write({0x14, 0x70}));
    EXPECT_EQ(0x40, user.get(0x1A));
}

TEST_F(Sx1509Test, TheResetSequenceResetsEverything) {
    EXPECT_TRUE(user.write({0x0E, 0x00, 0x00}));
    EXPECT_TRUE(user.write({0x7D, 0x12}));
    EXPECT_EQ(0x00, user.get(0x0E));
    EXPECT_TRUE(user.write({0x7D, 0x34}));
    EXPECT_EQ(0xFF, user.get(0x0E));
}

TEST_F(Sx1509Test, AnInterruptedResetSequenceResetsNothing) {
    EXPECT_TRUE(user.write({0x0E, 0x00, 0x00}));
    EXPECT_TRUE(user.write({0x7D, 0x34}));
    EXPECT_TRUE(user.write({0x7D, 0x12}));
    EXPECT_TRUE(user.write({0x1E, 0x40}));
    EXPECT_TRUE(user.write({0x7D, 0x34}));
    EXPECT_EQ(0x00, user.get(0x0E));
    EXPECT_EQ(0x40, user.get(0x1E));
}

TEST_F(Sx1509Test, ForgetsEverythingWhenPowerIsLost) {
    EXPECT_TRUE(user.write({0x0E, 0x00, 0x00, 0x55, 0x55}));
    EXPECT_EQ(0x5555, chip.pins());
    chip.losePower();
    EXPECT_EQ(0xFFFF, chip.pins());
    EXPECT_THAT(user.read({0x0E}, 2), ElementsAre(0xFF, 0xFF));
}

}  // namespace
