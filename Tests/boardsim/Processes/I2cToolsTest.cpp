// The I2C buses of the board, used by the distribution's own I2C tools.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using support::VirtualBoard;
using testing::AllOf;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

BoardRun shell(const std::string& script, const VirtualBoard& on = board()) {
    return on.run({"/bin/sh", "-c", "PATH=/usr/sbin:/usr/bin:/sbin:/bin; " + script});
}

TEST(I2cToolsTest, EveryBusIsListed) {
    const BoardRun run = shell("i2cdetect -l");
    EXPECT_EQ(0, run.status) << run.err;
    for (const char* bus : {"i2c-0\ti2c ", "i2c-1\ti2c ", "i2c-6\ti2c "}) {
        EXPECT_THAT(run.out, HasSubstr(bus));
    }
    EXPECT_THAT(run.out, Not(HasSubstr("i2c-7")));
}

TEST(I2cToolsTest, AScanFindsTheChipsAndWhatADriverHolds) {
    const BoardRun run = shell("i2cdetect -y 0");
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_THAT(run.out, AllOf(HasSubstr("20: -- -- -- -- -- -- -- -- -- -- 2a -- -- -- -- -- \n"),
                               HasSubstr("40: -- -- -- -- -- -- -- -- 48 -- -- -- -- -- -- -- \n"),
                               HasSubstr("50: UU -- -- -- -- -- -- -- -- -- -- 5b -- -- -- -- \n")));
    EXPECT_THAT(shell("i2cdetect -y -r 2").out,
                HasSubstr("30: -- -- -- -- -- -- -- -- -- -- -- -- -- -- 3e 3f \n"));
}

TEST(I2cToolsTest, ATemperatureSensorGivesTwelveBitsWhenAsked) {
    EXPECT_EQ("0x401d\n", shell("i2cset -y 1 0x48 1 0x60 && i2cget -y 1 0x48 0 w").out) << "29.25 degrees";
    EXPECT_EQ("0x001d\n", shell("i2cget -y 1 0x48 0 w").out) << "nine bits after power-on";
}

TEST(I2cToolsTest, AnExpanderKeepsItsDirectionsAndShowsItsPins) {
    EXPECT_EQ("0xffff\n", shell("i2cget -y 2 0x3f 0x0e w").out);
    EXPECT_EQ("0xf8\n0xfa\n",
              shell("i2cset -y 2 0x3f 0x11 0x02; i2cset -y 2 0x3f 0x0f 0xf8; i2cget -y 2 0x3f 0x0f; "
                    "i2cget -y 2 0x3f 0x11")
                  .out);
}

TEST(I2cToolsTest, CombinedTransfersReadOn) {
    EXPECT_EQ("0xff 0xff 0xff 0xff\n", shell("i2ctransfer -y 2 w1@0x3e 0x0e r4").out);
    EXPECT_EQ("0x0a 0x0b\n",
              shell("i2ctransfer -y 0 w3@0x2a 0x10 10 11 && i2ctransfer -y 0 w1@0x2a 0x10 r2").out);
}

TEST(I2cToolsTest, ADumpShowsAllRegisters) {
    const BoardRun run = shell("i2cset -y 0 0x2a 0x12 0xab; i2cdump -y 0 0x2a b");
    EXPECT_THAT(run.out, HasSubstr("10: 00 00 ab 00 "));
    EXPECT_THAT(shell("i2cset -y 0 0x2a 5 1 2 3 i; i2cdump -y 0 0x2a i").out,
                HasSubstr("00: 00 00 00 00 00 01 02 03 00 "));
}

TEST(I2cToolsTest, TheEepromIsAFileAndAChip) {
    EXPECT_EQ("0x91 0x56 0x01 0x00\n", shell("i2ctransfer -y -f 0 w2@0x50 0 0 r4").out);
    EXPECT_EQ(" 91 56 01 00\n", shell("od -An -tx1 -N4 /tmp/i2c/eeprom/eeprom").out);
    EXPECT_EQ("8192\n", shell("wc -c < /tmp/i2c/eeprom/eeprom").out);
    EXPECT_EQ("0x68 0x65 0x6c 0x6c 0x6f\n", shell("printf hello > /tmp/i2c/eeprom/eeprom; sleep 0.01; "
                                                  "i2ctransfer -y -f 0 w2@0x50 0 0 r5")
                                                .out);
    EXPECT_THAT(shell("i2cget -y 0 0x50").err, HasSubstr("Device or resource busy"));
}

TEST(I2cToolsTest, NamesLeadToBusesAndChips) {
    EXPECT_EQ("/dev/i2c-1\n/sys/bus/i2c/devices/2-003f\n",
              shell("readlink /tmp/i2c/fan /tmp/i2c/led_sync").out);
    EXPECT_EQ("tmp75\n", shell("cat /tmp/i2c/eth_temp/name").out);
}

TEST(I2cToolsTest, WithoutI2cThereIsNone) {
    const BoardRun run =
        shell("ls /dev/i2c-0 /sys/bus/i2c /sys/class/i2c-dev; ls /tmp/i2c | wc -l", board().without("i2c"));
    EXPECT_EQ("0\n", run.out);
    EXPECT_THAT(run.err,
                AllOf(HasSubstr("/dev/i2c-0"), HasSubstr("/sys/bus/i2c"), HasSubstr("/sys/class/i2c-dev")));
}

TEST(I2cToolsTest, TransfersAreTraced) {
    const BoardRun run =
        shell("i2cset -y 1 0x48 1 0x60; i2cget -y 1 0x48 0 w; i2cget -y 1 0x33 0", board().traced());
    EXPECT_THAT(run.trace, Contains(EndsWith(" i2c-1 0x48 write 0x01 0x60")));
    EXPECT_THAT(run.trace, Contains(EndsWith(" i2c-1 0x48 write 0x00, read 0x1d 0x40")));
    EXPECT_THAT(run.trace, Contains(EndsWith(" i2c-1 0x33 write 0x00: No such device or address")));
}

TEST(I2cToolsTest, RepeatedReadsAreFoldedInTheTrace) {
    const BoardRun run = shell("for i in 1 2 3 4; do i2cget -y 1 0x48 1 >/dev/null; done", board().traced());
    ASSERT_EQ(2U, run.trace.size());
    EXPECT_THAT(run.trace[1], EndsWith("… repeated 3 times"));
}

struct FaultRow {
    const char* fault;
    const char* script;
    const char* printed;
};

/// i2cget and its relatives say little; strace would say more, but the tools' own words are what is seen.
TEST(I2cToolsTest, FaultsOfChipsAndBuses) {
    const FaultRow rows[] = {
        {"i2c:fan@0x48:nack", "i2cget -y 1 0x48 0; i2cget -y 1 0x49 1", "0x00\n"},
        {"i2c:fan_radial_temp:nack", "i2cget -y 1 0x48 1; i2cget -y 1 0x49 1", "0x00\n"},
        {"i2c:i2c-1:timeout", "i2cget -y 1 0x48 1; i2cget -y 1 0x49 1; i2cget -y 0 0x48 1", "0x00\n"},
        {"i2c:fan@0x48:lost:times=1", "i2cget -y 1 0x48 1; i2cget -y 1 0x48 1", "0x00\n"},
        {"i2c:fan@0x48:refuse:after=1", "i2cget -y 1 0x48 1; i2cget -y 1 0x48 1", "0x00\n"},
        {"i2c:video_enc:value=0x5a:times=1", "i2cget -y 0 0x2a 1; i2cget -y 0 0x2a 1", "0x5a\n0x00\n"},
        {"i2c:fan_oled_temp:celsius=-24.5", "i2cset -y 1 0x49 1 0x60; i2cget -y 1 0x49 0 w", "0x80e7\n"},
        {"i2c:eth_led:pins=0x0008", "i2cget -y 2 0x3e 0x11", "0x08\n"},
        {"i2c:led_sync:power-loss:after=1",
         "i2cset -y 2 0x3f 0x0f 0xf8; i2cget -y 2 0x3f 0x0f; i2cset -y 2 0x3f 0x0f 0xf8; i2cget -y 2 0x3f "
         "0x0f",
         "0xff\n0xf8\n"},
        {"i2c:eeprom:nack", "cat /tmp/i2c/eeprom/eeprom || echo failed", "failed\n"},
    };
    for (const FaultRow& row : rows) {
        EXPECT_EQ(row.printed, shell(row.script, board().option("--fault", row.fault)).out) << row.fault;
    }
}

}  // namespace
