#include "Tools/boardsim/Models/GpioBlock.h"

#include <gtest/gtest.h>

namespace {

using boardsim::GpioBlock;

GpioBlock twoChips() {
    return GpioBlock({{"first", 100, 4}, {"second", 480, 2}});
}

TEST(GpioBlockTest, LinesAreLowInputsThatNobodyTookAfterPowerOn) {
    const GpioBlock lines = twoChips();
    for (const unsigned line : {100U, 103U, 480U, 481U}) {
        EXPECT_EQ(false, lines.level(line)) << line;
        EXPECT_EQ(false, lines.isOutput(line)) << line;
        EXPECT_FALSE(lines.isTaken(line)) << line;
    }
}

TEST(GpioBlockTest, LinesThatNoChipHasAreRefused) {
    GpioBlock lines = twoChips();
    for (const unsigned line : {0U, 99U, 104U, 482U, 65535U}) {
        EXPECT_EQ(std::errc::invalid_argument, lines.request(line)) << line;
        EXPECT_EQ(std::errc::invalid_argument, lines.free(line)) << line;
        EXPECT_EQ(std::errc::invalid_argument, lines.makeInput(line)) << line;
        EXPECT_EQ(std::errc::invalid_argument, lines.makeOutput(line, true)) << line;
        EXPECT_EQ(std::errc::invalid_argument, lines.set(line, true)) << line;
        EXPECT_EQ(std::nullopt, lines.level(line)) << line;
    }
}

TEST(GpioBlockTest, ALineIsTakenOnceAndGivenBackOnce) {
    GpioBlock lines = twoChips();
    EXPECT_EQ(std::errc::invalid_argument, lines.free(100));
    EXPECT_EQ(std::errc{}, lines.request(100));
    EXPECT_TRUE(lines.isTaken(100));
    EXPECT_EQ(std::errc::device_or_resource_busy, lines.request(100));
    EXPECT_EQ(std::errc{}, lines.free(100));
    EXPECT_EQ(std::errc{}, lines.request(100));
}

TEST(GpioBlockTest, AnOutputHasItsOwnLevelAndAnInputThatOfItsDriver) {
    GpioBlock lines = twoChips();
    lines.drive(101, true);
    EXPECT_EQ(true, lines.level(101));
    EXPECT_EQ(std::errc{}, lines.makeOutput(101, false));
    EXPECT_EQ(false, lines.level(101));
    EXPECT_EQ(std::errc{}, lines.set(101, true));
    EXPECT_EQ(true, lines.level(101));
    lines.drive(101, false);
    EXPECT_EQ(true, lines.level(101));
    EXPECT_EQ(std::errc{}, lines.makeInput(101));
    EXPECT_EQ(false, lines.level(101));
}

TEST(GpioBlockTest, AnInputCannotBeSet) {
    GpioBlock lines = twoChips();
    EXPECT_EQ(std::errc::operation_not_permitted, lines.set(480, true));
    EXPECT_EQ(false, lines.level(480));
}

TEST(GpioBlockTest, ALineKeepsDirectionAndLevelWhenItIsGivenBack) {
    GpioBlock lines = twoChips();
    lines.request(103);
    lines.makeOutput(103, true);
    lines.free(103);
    EXPECT_EQ(true, lines.isOutput(103));
    EXPECT_EQ(true, lines.level(103));
}

TEST(GpioBlockTest, AStuckLineDoesNotFollow) {
    GpioBlock lines = twoChips();
    lines.stick(102, true);
    EXPECT_EQ(true, lines.level(102));
    EXPECT_EQ(std::errc{}, lines.makeOutput(102, false));
    EXPECT_EQ(true, lines.level(102));
}

}  // namespace
