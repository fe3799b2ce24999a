// The library's I2C drivers on the virtual board, whose chips know nothing of them.
#include <gmock/gmock.h>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using support::VirtualBoard;
using testing::Contains;
using testing::HasSubstr;

std::string output(const std::string& word, const VirtualBoard& on = board()) {
    const BoardRun run = on.run({I2C_DRIVERS, word});
    EXPECT_EQ(0, run.status) << run.err;
    return run.out;
}

VirtualBoard with(const std::string& fault) {
    return board().option("--fault", fault);
}

TEST(I2cDriversTest, TheRegistryTellsBusesAndPlaces) {
    EXPECT_EQ("1 1-0049 49 -1\n", output("places"));
}

TEST(I2cDriversTest, ASensorIsReadInTwelveBits) {
    EXPECT_EQ("read 0x1021\n", output("temperature")) << "33 1/16 degrees";
    EXPECT_EQ("read 0x80e7\n", output("temperature", with("i2c:fan_oled_temp:celsius=-24.5")));
}

TEST(I2cDriversTest, SeveralRegistersTakeOneTransfer) {
    EXPECT_EQ("1 1 1 2 3\n", output("many"));
    const BoardRun run = board().traced().run({I2C_DRIVERS, "many"});
    EXPECT_THAT(run.trace, Contains(HasSubstr(" i2c-0 0x2a write 0x20, read 0x01 0x02 0x03")));
}

TEST(I2cDriversTest, TheVideoChipsKeepTheirRegisters) {
    EXPECT_EQ("1 1 0x99\n", output("video"));
    EXPECT_EQ("1 0x81 0x00\n", output("video-sync"));
}

TEST(I2cDriversTest, AnExpanderDrivesItsLeds) {
    EXPECT_EQ("sx1509b: 2-63 1 0xfa 0xfe 1 0xfb 0xff\n", output("leds"));
}

TEST(I2cDriversTest, AnExpanderThatLostItsPowerIsRestored) {
    EXPECT_EQ("0, 0, 0\n", output("restore"));
    EXPECT_EQ("0, 1 restored 1 0xcf, 0\n", output("restore", with("i2c:eth_led:power-loss:after=5")));
}

TEST(I2cDriversTest, TheWayTheBoardWasResetIsReadFromPins) {
    EXPECT_EQ("0 0\n", output("reset-mode"));
    EXPECT_EQ("1 1\n", output("reset-mode", with("i2c:eth_led:pins=0x0008")));
    EXPECT_EQ("4 1\n", output("reset-mode", with("i2c:eth_led:pins=0")));
}

TEST(I2cDriversTest, TheFlipFlopsOfTheResetAreCleared) {
    EXPECT_EQ("1 0xff\n", output("flip-flops"));
}

struct FaultRow {
    const char* fault;
    const char* word;
    const char* printed;
};

TEST(I2cDriversTest, FaultsAreResults) {
    const FaultRow rows[] = {
        {"i2c:led_sync:nack", "open", "3\n"},
        {"i2c:led_sync:timeout:after=1:times=1", "open", "3\n"},
        {"i2c:fan_oled_temp:nack", "temperature", "failed 0x0000\n"},
        {"i2c:fan_oled_temp:lost:after=1", "temperature", "failed 0x0000\n"},
        {"i2c:video_enc:refuse", "video", "1 0 0xffffffff\n"},
        {"i2c:video_enc:value=0x11", "video", "1 1 0x11\n"},
        {"i2c:eth_led:nack:after=4", "restore", "-1, -1, -1\n"},
    };
    for (const FaultRow& row : rows) {
        EXPECT_EQ(row.printed, output(row.word, with(row.fault))) << row.fault;
    }
    EXPECT_EQ("1\n", output("open", board().without("i2c"))) << "no bus";
}

}  // namespace
