#include "Vl/HAL/Chips/OrcaResetIOs.h"

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/Bus/I2cCalls.h"
#include "Vl/HAL/Chips/Sx1509b.h"

namespace {

using testing::ElementsAre;
using Valen::OrcaResetIOs;
using Valen::Sx1509b;

constexpr int kPortA = 0x11;

/// On an expander whose pins are all high inputs, as after its power came on.
class OrcaResetIOsTest : public BoardWorld {
protected:
    OrcaResetIOsTest() {
        support::PrivateWorld::write("/dev/i2c-3", "");
        chip.registers.fill(0xFF);
        expander.init(3, 0x3E, false);
        chip.calls.clear();
    }

    I2cCalls chip;
    Sx1509b expander;
    OrcaResetIOs resets{&expander};
};

TEST_F(OrcaResetIOsTest, TheResetModeIsInTwoPins) {
    const struct {
        int levels;
        int mode;
    } rows[] = {{0x00, 4}, {0x08, 1}, {0x04, 0}, {0x0C, 0}, {0xF3, 4}, {0xFB, 1}, {0xF7, 0}};
    for (const auto& row : rows) {
        chip.next[kPortA] = {row.levels};
        EXPECT_EQ(row.mode, resets.queryResetMode()) << row.levels;
    }
}

TEST_F(OrcaResetIOsTest, AnExpanderThatDoesNotAnswerTellsOfNoResetOnPurpose) {
    chip.next[kPortA] = {-1, -1};
    EXPECT_EQ(0, resets.queryResetMode());
    EXPECT_FALSE(resets.querySwReset());
}

TEST_F(OrcaResetIOsTest, ASoftwareResetPullsItsPinLow) {
    const struct {
        int levels;
        bool requested;
    } rows[] = {{0x00, true}, {0xFB, true}, {0x04, false}, {0xFF, false}};
    for (const auto& row : rows) {
        chip.next[kPortA] = {row.levels};
        EXPECT_EQ(row.requested, resets.querySwReset()) << row.levels;
    }
}

TEST_F(OrcaResetIOsTest, QueriesAreOneReadEach) {
    resets.queryResetMode();
    resets.querySwReset();
    EXPECT_THAT(chip.calls, ElementsAre("read8 11", "read8 11"));
}

TEST_F(OrcaResetIOsTest, ClearingWaitsUntilBothPinsAreHigh) {
    chip.next[kPortA] = {0x00, 0x04, 0x08, 0xF3, 0x0C};
    EXPECT_TRUE(resets.resetFlipFlops());
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=fe", "write8 0f=fe", "read8 11", "read8 11", "read8 11",
                                        "read8 11", "read8 11", "write8 11=ff"));
}

TEST_F(OrcaResetIOsTest, AFailedReadEndsTheWaitOnPurpose) {
    chip.next[kPortA] = {0x00, -1};
    EXPECT_TRUE(resets.resetFlipFlops());
    EXPECT_THAT(chip.calls,
                ElementsAre("write8 11=fe", "write8 0f=fe", "read8 11", "read8 11", "write8 11=ff"));
}

TEST_F(OrcaResetIOsTest, WithoutItsPinLowNothingIsWaitedFor) {
    for (const std::size_t failing : {0U, 1U}) {
        chip.calls.clear();
        chip.failing = failing;
        EXPECT_FALSE(resets.resetFlipFlops());
        EXPECT_EQ(failing + 1, chip.calls.size());
    }
}

TEST_F(OrcaResetIOsTest, APinThatCannotBeDrivenHighAgainIsReported) {
    chip.failing = 3;
    EXPECT_FALSE(resets.resetFlipFlops());
    EXPECT_THAT(chip.calls, ElementsAre("write8 11=fe", "write8 0f=fe", "read8 11", "write8 11=ff"));
}

}  // namespace
