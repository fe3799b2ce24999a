// What the control processor tells of the central sync block.
#include <array>
#include <string>
#include <tuple>

#include "Tests/HAL/Board/FpgaBoard.h"

namespace {

using support::Read32;
using support::Read8;
using support::Write32;
using testing::ElementsAre;
using testing::IsEmpty;
using Valen::CPInterface;

constexpr unsigned int kStatus = 0x200C;
constexpr unsigned int kNetConfig = 0x2010;
constexpr unsigned int kLow = 0x2038;
constexpr unsigned int kHigh = 0x203C;
constexpr std::uint32_t kFrames25 = 0x04000000;

class CentralSyncTest : public FpgaBoard {};

TEST_F(CentralSyncTest, TheSyncWordComesWithTheWordThatThereIsOne) {
    registers.set32(0x2034, 0x12345678);
    EXPECT_EQ(std::pair(true, 0x12345678U), board.getSyncWord());
    EXPECT_EQ(0x12345678U, board.getTimestamp());
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(0x2034), Read32(0x2034)));
}

TEST_F(CentralSyncTest, IdentifiersAreAWordAndThreeBytes) {
    registers.set32(0x2004, 0x44332211);
    registers.set32(0x2008, 0xFF776655);
    registers.set32(0x201C, 0x01020304);
    registers.set32(0x2020, 0xFF806005);
    EXPECT_EQ(0x77665544332211U, board.getSyncID());
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Read32(0x2004), Read8(0x2008), Read8(0x2009), Read8(0x200A)));
    registers.clearAccesses();
    EXPECT_EQ(0x80600501020304U, board.getSyncMaster());
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Read32(0x201C), Read8(0x2020), Read8(0x2021), Read8(0x2022)));
}

TEST_F(CentralSyncTest, TheStatusTellsTheMaster) {
    registers.set32(kStatus, 0xFFFFFFFE);
    EXPECT_FALSE(board.isSyncMaster());
    registers.set32(kStatus, 1);
    EXPECT_TRUE(board.isSyncMaster());
}

TEST_F(CentralSyncTest, TheNetworksConfigurationIsWrittenAndLogged) {
    EXPECT_TRUE(board.setSyncNetConfigId(4711));
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(kNetConfig, 4711)));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("CPCardInterface: Set new Sync NetConfigId: 4711")));
}

TEST_F(CentralSyncTest, NoConfigurationIsWrittenAndLoggedAsZero) {
    EXPECT_TRUE(board.setSyncNetConfigId(0xFFFFFFFF));
    EXPECT_THAT(registers.accesses(), ElementsAre(Write32(kNetConfig, 0)));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("CPCardInterface: Set new Sync NetConfigId: 0")));
}

TEST_F(CentralSyncTest, TheConfigurationIsAServiceMessageThatAllThresholdsAdmitAtFirst) {
    logUpTo(Valen::Log::SeverityLevel::INFO);
    board.setSyncNetConfigId(1);
    EXPECT_THAT(syslog.lines(), IsEmpty());
    logUpTo(Valen::Log::SeverityLevel::SERVICE);
    board.setSyncNetConfigId(2);
    EXPECT_THAT(syslog.texts(), ElementsAre("CPCardInterface: Set new Sync NetConfigId: 2"));
}

TEST_F(CentralSyncTest, ASecondOfTheDayIsSetWithTheLowWordAtZeroMeanwhile) {
    EXPECT_TRUE(board.setVitc(23 * 3600 + 59 * 60 + 48));
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Write32(kLow, 0), Write32(kHigh, 0x02030509), Write32(kLow, 0x04080000)));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: VITC set to: 04080000, 02030509")));
}

TEST_F(CentralSyncTest, SecondsOfOtherDaysAreSecondsOfADay) {
    EXPECT_TRUE(board.setVitc(86400 + 1));
    EXPECT_EQ(0x00010000U, registers.get32(kLow));
    EXPECT_EQ(0U, registers.get32(kHigh));
    EXPECT_TRUE(board.setVitc(-1));
    EXPECT_EQ(0x05090000U, registers.get32(kLow));
    EXPECT_EQ(0x02030509U, registers.get32(kHigh));
}

/// What the seconds of a day are in the registers, by the plain rule for each digit.
TEST_F(CentralSyncTest, EverySecondOfTheDayHasItsDigits) {
    for (unsigned int s = 0; s < 86400; s += 61) {
        const unsigned int hour = s / 3600 % 24;
        EXPECT_TRUE(board.setVitc(static_cast<int>(s)));
        EXPECT_EQ((s % 10) << 16 | (s / 10 % 6) << 24, registers.get32(kLow)) << s;
        EXPECT_EQ(s / 60 % 10 | (s / 600 % 6) << 8 | (hour % 10) << 16 | (hour / 10) << 24,
                  registers.get32(kHigh))
            << s;
        syslog.lines();
    }
}

TEST_F(CentralSyncTest, ATimeIsWrittenHighThenLowAndLookedAt) {
    registers.set32(kStatus, kFrames25);
    EXPECT_EQ(
        1, board.setVitcData({.seconds = 45296, .milliseconds = 960, .userBits = {0x21, 0x43, 0x65, 0x87}}));
    // 12:34:56, frame 24
    EXPECT_THAT(registers.accesses(), ElementsAre(Read32(kStatus), Write32(kHigh, 0x81726354),
                                                  Write32(kLow, 0x45362214), Read32(kHigh)));
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: VITC set to: 45362214, 81726354")));
}

TEST_F(CentralSyncTest, ATimeIsWrittenAgainUntilTheHighWordStays) {
    registers.onRead(kHigh, {0x00000001, 0x00000101, 0x00000100});
    EXPECT_EQ(1, board.setVitcData({.seconds = 600}));
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Read32(kStatus), Write32(kHigh, 0x100), Write32(kLow, 0), Read32(kHigh),
                            Write32(kHigh, 0x100), Write32(kLow, 0), Read32(kHigh), Write32(kHigh, 0x100),
                            Write32(kLow, 0), Read32(kHigh)));
    EXPECT_THAT(syslog.texts(), ElementsAre("CPCardInterface: VITC set to: 00000000, 00000100"));
}

TEST_F(CentralSyncTest, ATimeIsReadHighLowHigh) {
    registers.set32(kHigh, 0x81726354);
    registers.set32(kLow, 0x45362214);
    registers.set32(kStatus, kFrames25);
    CPInterface::Vitc time;
    EXPECT_TRUE(board.getVitcData(time));
    EXPECT_EQ(45296U, time.seconds);
    EXPECT_EQ(24U, time.frames);
    EXPECT_EQ(960U, time.milliseconds);
    EXPECT_THAT(time.userBits, ElementsAre(0x21, 0x43, 0x65, 0x87));
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Read32(kHigh), Read32(kLow), Read32(kHigh), Read32(kStatus)));
    EXPECT_THAT(syslog.lines(), IsEmpty());
}

TEST_F(CentralSyncTest, ATimeIsReadAgainUntilTheHighWordStays) {
    registers.onRead(kHigh, {1, 2, 2, 3, 4, 4});
    registers.onRead(kLow, {0x01000000, 0x02000000, 0x03000000});
    CPInterface::Vitc time;
    EXPECT_TRUE(board.getVitcData(time));
    EXPECT_EQ(4U * 60 + 30, time.seconds);
    EXPECT_THAT(registers.accesses(),
                ElementsAre(Read32(kHigh), Read32(kLow), Read32(kHigh), Read32(kHigh), Read32(kLow),
                            Read32(kHigh), Read32(kHigh), Read32(kLow), Read32(kHigh), Read32(kStatus)));
}

TEST_F(CentralSyncTest, Frame29Of30IsAt966Milliseconds) {
    registers.set32(kLow, 0x00000209);
    CPInterface::Vitc time;
    EXPECT_TRUE(board.getVitcData(time));
    EXPECT_EQ(29U, time.frames);
    EXPECT_EQ(966U, time.milliseconds);
}

/// A control processor whose FPGA has no central sync block.
class NoSyncBlockTest : public FpgaBoard {
protected:
    NoSyncBlockTest() : FpgaBoard(core("other", {1, 0x40})) {}
};

TEST_F(NoSyncBlockTest, EverythingFailsOrIsZero) {
    EXPECT_EQ(std::pair(false, 0U), board.getSyncWord());
    EXPECT_EQ(0U, board.getTimestamp());
    EXPECT_EQ(0U, board.getSyncMaster());
    EXPECT_EQ(0U, board.getSyncID());
    EXPECT_FALSE(board.isSyncMaster());
    EXPECT_FALSE(board.setVitc(1));
    EXPECT_THAT(syslog.lines(), IsEmpty());
    EXPECT_THAT(registers.accesses(), IsEmpty());
}

TEST_F(NoSyncBlockTest, TheConfigurationCannotBeSetWhichIsLogged) {
    EXPECT_FALSE(board.setSyncNetConfigId(1));
    EXPECT_THAT(syslog.lines(), ElementsAre(service("CPCardInterface: Failed to set Sync NetConfigId!")));
}

TEST_F(NoSyncBlockTest, TheTimeCannotBeHadWhichIsLogged) {
    CPInterface::Vitc time{.seconds = 7};
    EXPECT_EQ(-7, board.setVitcData(time));
    EXPECT_FALSE(board.getVitcData(time));
    EXPECT_EQ(7U, time.seconds);
    EXPECT_THAT(syslog.lines(), ElementsAre(debug("CPCardInterface: could not get vitc!"),
                                            debug("CPCardInterface: could not get vitc!")));
}

}  // namespace
