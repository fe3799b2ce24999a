// GPIO lines as programs see them: the device, the kernel's class; and the second programmable device.
#include <gmock/gmock.h>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using testing::Contains;
using testing::HasSubstr;

const std::string kClient = CLIENT;

BoardRun shell(const std::string& script, const support::VirtualBoard& on = board()) {
    return on.run({"/bin/sh", "-c", script});
}

TEST(GpioDeviceFileTest, AnswersRequestsWhoseArgumentIsTheValue) {
    // Take line 499, make it an output at 1, get it, set it to 0, get it, give it back.
    const BoardRun run = board().run({kClient, "gpio:0x7D06,499", "gpio:0x7D04,0x010101F3", "gpio:0x7D05,499",
                                      "gpio:0x7D03,499", "gpio:0x7D05,499", "gpio:0x7D07,499"});
    EXPECT_EQ("0\n0\n1\n0\n0\n0\n", run.out) << run.err;
}

TEST(GpioDeviceFileTest, RefusesWithTheKernelsErrors) {
    // EINVAL for an unknown line, ENOTTY for an unknown request, EPERM for setting an input, EBUSY twice
    // taken.
    const BoardRun run = board().run({kClient, "gpio:0x7D06,1", "gpio:0x7D08,499", "gpio:0x7D03,499",
                                      "gpio:0x7D06,499", "gpio:0x7D06,499"});
    EXPECT_EQ("-1, 22\n-1, 25\n-1, 1\n0\n-1, 16\n", run.out) << run.err;
}

TEST(GpioDeviceFileTest, TakesOtherCallsAsWrong) {
    EXPECT_NE(0, shell("cat /dev/gpio").status);
    EXPECT_EQ(99, shell("[ -e /dev/gpio ] || exit 99", board().without("gpio")).status);
}

TEST(GpioDeviceFileTest, EveryRequestIsALineOfTheTrace) {
    const BoardRun run = board().traced().run({kClient, "gpio:0x7D04,0x010101F3", "gpio:0x7D05,499"});
    EXPECT_THAT(run.trace, Contains(HasSubstr("gpio direction 499 output high -> 0")));
    EXPECT_THAT(run.trace, Contains(HasSubstr("gpio get 499 -> 1")));
}

TEST(GpioDeviceFileTest, AStuckLineDoesNotFollow) {
    const BoardRun run = board()
                             .option("--fault", "gpio:oled_pio+3:stuck=0")
                             .run({kClient, "gpio:0x7D04,0x010101F3", "gpio:0x7D05,499"});
    EXPECT_EQ("0\n0\n", run.out);
}

TEST(GpioClassFilesTest, TellChips) {
    EXPECT_EQ(
        "480 reset_pio 16\n496 oled_pio 8\n504 misc_pio 8\n",
        shell("cd /sys/class/gpio; for c in gpiochip*; do echo $(cat $c/base $c/label $c/ngpio); done").out);
}

TEST(GpioClassFilesTest, ALineIsExportedDrivenAndGivenBack) {
    const BoardRun run = shell(
        "cd /sys/class/gpio; echo 499 > export; echo out > gpio499/direction; cat gpio499/value; "
        "echo 1 > gpio499/value; cat gpio499/value; " +
        kClient +
        " gpio:0x7D05,499 gpio:0x7D06,499; "
        "echo 499 > unexport; ls");
    EXPECT_EQ("0\n1\n1\n-1, 16\nexport\ngpiochip480\ngpiochip496\ngpiochip504\nunexport\n", run.out)
        << run.err;
}

TEST(GpioClassFilesTest, TheMachinesOtherClassesAreThere) {
    EXPECT_EQ(shell("ls /sys/class/net").out, shell("ls /sys/class/net/").out);
    EXPECT_NE("", shell("cat /sys/class/net/lo/address").out);
}

TEST(CpldTest, TellsItsCardIdWhereItsLayoutSays) {
    EXPECT_EQ(" 80000104 2f4e0002 00000000\n", shell("od -A n -t x4 -j 0x40 -N 12 /dev/cpld").out);
    EXPECT_EQ("cardid\nbus_breakout\n",
              shell("grep -ao 'cardid\\|bus_breakout' /sys/bus/avalon/devices/cpld/layout").out);
}

TEST(CpldTest, IsGoneWithoutItsPart) {
    EXPECT_NE(0, shell("ls /dev/cpld 2>/dev/null", board().without("cpld")).status);
    EXPECT_NE(0, shell("ls /sys/bus/avalon/devices/cpld 2>/dev/null", board().without("cpld")).status);
}

}  // namespace
