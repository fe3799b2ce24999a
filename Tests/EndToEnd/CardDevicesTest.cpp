// The drivers of 1-Wire chips, GPIO lines, PHYs behind network interfaces and the CPLD, on the virtual board.
#include <gmock/gmock.h>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

BoardRun drive(const std::vector<std::string>& words, const support::VirtualBoard& on = board()) {
    std::vector<std::string> command{CARD_DEVICES};
    command.insert(command.end(), words.begin(), words.end());
    return on.run(command);
}

support::VirtualBoard faulty(const std::string& fault) {
    return board().option("--fault", fault);
}

TEST(W1EndToEnd, SlavesAreListedByBusRemovedAndFoundAgain) {
    const BoardRun run =
        drive({"buses", "list:-1", "list:2", "remove:2d-00000a1b2c3d", "list:1", "search:1", "list:1"});
    EXPECT_EQ(
        "2 buses\n"
        "22-0000001a2b3c on bus 1\n22-00000052f00d on bus 2\n2d-00000a1b2c3d on bus 1\n"
        "22-00000052f00d on bus 2\n"
        "removed yes\n"
        "22-0000001a2b3c on bus 1\n"
        "searched yes\n"
        "22-0000001a2b3c on bus 1\n2d-00000a1b2c3d on bus 1\n",
        run.out);
}

TEST(W1EndToEnd, AllSlavesAreRemovedAndFoundAgain) {
    EXPECT_EQ("removed all yes\nsearched yes\n22-00000052f00d on bus 2\n",
              drive({"remove-all", "list:-1", "search:-1", "list:2"}).out);
}

TEST(W1EndToEnd, WithoutBusesThereIsNothing) {
    EXPECT_EQ("0 buses\nno identity EEPROM\n",
              drive({"buses", "list:-1", "identity:-1"}, board().without("w1")).out.substr(0, 27));
}

TEST(W1EndToEnd, TheCardsIdentityIsRead) {
    EXPECT_EQ("2d-00000a1b2c3d serial yes 2012345678903 valid yes type 0x80\n", drive({"identity:1"}).out);
}

const char* const kRead = "2d-00000a1b2c3d serial yes 2012345678903 valid yes type 0x80\n";
const char* const kNotRead =
    "no identity EEPROM\n00-000000000000 serial no 0000000000000 valid no type 0x00\n";

/// What goes wrong while the EEPROM is looked for, and what is known of it then.
struct Row {
    const char* name;
    const char* fault;
    const char* out;
};

class IdentityFault : public testing::TestWithParam<Row> {};

TEST_P(IdentityFault, ShowsInWhatIsRead) {
    EXPECT_EQ(GetParam().out, drive({"identity:1"}, faulty(GetParam().fault)).out);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, IdentityFault,
    testing::Values(Row{"ShortReadsAreContinued", "w1:2d-00000a1b2c3d:short-read:times=5", kRead},
                    Row{"DataThatDoNotComeAreReadAgain", "w1:2d-00000a1b2c3d:unplug:times=3:after=2", kRead},
                    // A checksum that cannot be read closes the file.
                    Row{"AChecksumThatDoesNotComeEndsIt", "w1:2d-00000a1b2c3d:unplug:times=1:after=1",
                        kNotRead},
                    Row{"AChipThatIsOffTheBusIsNoIdentity", "w1:2d-00000a1b2c3d:unplug", kNotRead}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(W1EndToEnd, AWrongBitIsNoticedAndReadAnew) {
    const BoardRun run = drive({"identity:1"}, faulty("w1:2d-00000a1b2c3d:crc:times=1").traced());
    EXPECT_EQ(kRead, run.out);
    // The kernel is made to forget its copy.
    EXPECT_THAT(run.trace, Contains(HasSubstr("w1 2d-00000a1b2c3d/eeprom write 0x00 at 127")));
}

TEST(W1EndToEnd, ARecordIsWrittenAndReadBack) {
    EXPECT_EQ("written yes\n", drive({"write:60"}).out);
}

class TornRecord : public testing::TestWithParam<int> {};

TEST_P(TornRecord, IsWrittenAgain) {
    const BoardRun run =
        drive({"write:16", "identity:1"},
              faulty("w1:2d-00000a1b2c3d:torn=" + std::to_string(GetParam()) + ":after=1:times=1"));
    EXPECT_EQ(std::string("written yes\n") + kRead, run.out);
}

INSTANTIATE_TEST_SUITE_P(PowerFailsAfterEveryByte, TornRecord, testing::Range(0, 16));

TEST(W1EndToEnd, ARecordThatCannotBeWrittenIsGivenUpAfterTenTimes) {
    const BoardRun run = drive({"write:16"}, faulty("w1:2d-00000a1b2c3d:torn=3:after=1"));
    EXPECT_EQ("written no\n", run.out);
    EXPECT_THAT(run.log, Contains(HasSubstr("writing w1 eeprom @ 28 failed!")));
}

TEST(W1EndToEnd, ShortWritesAreContinued) {
    EXPECT_EQ("written yes\n", drive({"write:60"}, faulty("w1:2d-00000a1b2c3d:short-write:times=4")).out);
}

TEST(W1EndToEnd, ASensorIsChosenByItsUserDataAndRead) {
    EXPECT_EQ("22-0000001a2b3c open yes\ntemperature 500\n", drive({"temperature:0"}).out);
    EXPECT_EQ("22-00000052f00d open yes\ntemperature 680\n", drive({"temperature:3"}).out);
    EXPECT_EQ("22-0000001a2b3c open yes\ntemperature -12\n",
              drive({"temperature:0"}, faulty("w1:22-0000001a2b3c:value=-0.75")).out);
}

TEST(W1EndToEnd, NoSensorMatchesOtherUserData) {
    EXPECT_THAT(drive({"temperature:7"}).out, HasSubstr("open no\ntemperature 2147483647\n"));
}

TEST(W1EndToEnd, AnInvalidReadingIsTriedAgain) {
    EXPECT_EQ("22-0000001a2b3c open yes\ntemperature 500\n",
              drive({"temperature:0"}, faulty("w1:22-0000001a2b3c:crc:times=1")).out);
}

TEST(W1EndToEnd, AnUnpluggedSensorIsNotFound) {
    EXPECT_THAT(drive({"temperature:0"}, faulty("w1:22-0000001a2b3c:unplug")).out, HasSubstr("open no\n"));
}

TEST(GpioEndToEnd, AResetLineIsTakenByLabelDrivenAndGivenBack) {
    EXPECT_EQ("line 499: 0 0 high yes 0 high no 0\n", drive({"reset:oled_pio"}).out);
}

TEST(GpioEndToEnd, ALineThatIsTakenIsRefused) {
    EXPECT_EQ("line 499: -1 0 high yes 0 high no 0\n",
              drive({"reset:oled_pio"}, faulty("gpio:oled_pio+3:taken")).out);
}

TEST(GpioEndToEnd, AnUnknownLabelHasNoLines) {
    EXPECT_THAT(drive({"reset:no_pio"}).out, HasSubstr("line 2: -1 -1 high no -1 high no -1"));
}

TEST(MiiEndToEnd, BothPhysAreSetUp) {
    EXPECT_THAT(drive({"phy0"}).out, HasSubstr("id 0x0141 0x0dd1 init yes set yes speed 3"));
    EXPECT_THAT(drive({"phy1"}).out, HasSubstr("id 0x2000 0xa231 init yes set yes speed 3"));
}

TEST(MiiEndToEnd, TheSameAccessesAreSeenByThePhys) {
    const BoardRun run = drive({"phy1"}, board().traced());
    EXPECT_THAT(run.trace, Contains(HasSubstr("eth1 mdio write phy 1 reg 14 0x016f")));
    EXPECT_THAT(run.trace, Contains(HasSubstr("eth1 mdio write phy 1 reg 9 0x0380")));
}

TEST(MiiEndToEnd, WithoutAnInterfaceOfThatKindEveryAccessFails) {
    EXPECT_THAT(drive({"phy1"}, board().without("mii")).out, Not(HasSubstr("init yes")));
}

TEST(CpldEndToEnd, TheBusBreakoutIsFoundInItsLayout) {
    EXPECT_EQ("cpld type 0\n", drive({"cpld"}).out);
    EXPECT_EQ("cpld type 1\n", drive({"cpld"}, board().without("cpld")).out);
}

}  // namespace
