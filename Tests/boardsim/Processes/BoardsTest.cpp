// Boards as JSON, and other boards than the usual one.
#include <gmock/gmock.h>

#include <fstream>

#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/Support/VirtualBoard.h"
#include "Tests/boardsim/Support/Process.h"
#include "Tests/boardsim/Support/RandomBoard.h"
#include "Tools/boardsim/Board/Json/BoardJson.h"

namespace {

using support::board;
using support::BoardRun;
using testing::HasSubstr;

BoardRun shell(const std::string& script, const support::VirtualBoard& on) {
    return on.run({"/bin/sh", "-c", script});
}

/// All that a program can see of a board without changing it. Terminals below /dev are the machine's.
const char* const kLookAround =
    "ls /dev; ls -R /tmp/i2c /sys/class/gpio /sys/class/hwmon /sys/bus/w1/devices /sys/bus/avalon 2>&1; "
    "cat /sys/class/hwmon/hwmon*/device/temp*_input; "
    "cat /sys/bus/avalon/devices/*/layout /dev/cpld /tmp/i2c/eeprom/eeprom /dev/bootrom "
    "/sys/bus/w1/devices/*/eeprom 2>&1 | sha256sum";

class BoardsTest : public testing::Test {
protected:
    std::string write(const std::string& text) const {
        std::ofstream(directory.file("board.json")) << text;
        return directory.file("board.json");
    }
    static std::string print(std::vector<std::string> words) {
        words.insert(words.begin(), BOARDSIM);
        std::string output;
        EXPECT_EQ(0, processes::runToEnd(words, output));
        return output;
    }

    support::TemporaryDirectory directory;
};

TEST_F(BoardsTest, TheBuiltInBoardsArePrinted) {
    EXPECT_EQ(boardsim::writeBoards(boardsim::builtInBoards()), print({"boards"}));
    EXPECT_EQ(boardsim::writeBoard(boardsim::hd24Board()), print({"boards", "hd24"}));
}

TEST_F(BoardsTest, WhatIsPrintedMakesTheSameBoard) {
    for (const char* name : {"orca", "hd24"}) {
        const std::string file = write(print({"boards", name}));
        const BoardRun named = shell(kLookAround, board().option("--board", name));
        const BoardRun read = shell(kLookAround, board().option("--board", file));
        EXPECT_THAT(named.out, HasSubstr("temp1_input"));
        EXPECT_EQ(named.out, read.out);
    }
}

TEST_F(BoardsTest, ABoardOfItsNameOnlyRunsPrograms) {
    const std::string file = write(R"({"name": "bare"})");
    const BoardRun run = shell(
        "ls -d /dev/fpga /dev/gpio /dev/cpld /dev/bootrom /dev/i2c-0 /sys/bus/w1 "
        "/sys/bus/avalon /sys/class/gpio /sys/class/hwmon 2>/dev/null; ls /tmp/i2c; exit 3",
        board().option("--board", file));
    EXPECT_EQ("", run.out);
    EXPECT_EQ(3, run.status) << run.err;
}

TEST_F(BoardsTest, RandomBoardsRunPrograms) {
    for (const std::uint32_t seed : {1U, 2U, 3U, 4U, 5U}) {
        const std::string file = write(boardsim::writeBoard(boards::randomBoard(seed)));
        EXPECT_EQ(0, board().option("--board", file).run({"/bin/true"}).status) << seed;
    }
}

TEST_F(BoardsTest, AFileThatDescribesNoBoardIsRefusedWithStatusTwo) {
    const std::string file = write("{\"name\": \"b\",\n\"wheels\": 4}");
    const BoardRun run = board().option("--board", file).run({"/bin/true"});
    EXPECT_EQ(2, run.status);
    EXPECT_THAT(run.err, HasSubstr(file + ":2: wheels: there is no such field"));
    EXPECT_EQ(2, board().option("--board", "raft").run({"/bin/true"}).status);
    EXPECT_EQ(2, board().option("--board", "/").run({"/bin/true"}).status);
}

TEST_F(BoardsTest, TheIdentityRomIsReadWrittenAndSought) {
    const BoardRun run = shell(
        "od -A n -t x1 -j 16 -N 6 /dev/bootrom; od -A n -t x4 -j 28 -N 4 /dev/bootrom; wc -c < /dev/bootrom; "
        "printf xyz | dd of=/dev/bootrom bs=1 seek=65533 conv=notrunc 2>/dev/null; tail -c 4 /dev/bootrom | "
        "od -A n -c",
        board());
    EXPECT_EQ(" 02 00 5e 10 20 30\n 80000102\n65536\n 377   x   y   z\n", run.out) << run.err;
}

TEST_F(BoardsTest, TemperaturesAreTextInMillidegrees) {
    EXPECT_EQ("44125\n47500\n38062\n", shell("cat /sys/class/hwmon/hwmon?/device/temp?_input", board()).out);
    EXPECT_EQ("-7", shell("cat /sys/class/hwmon/hwmon1/device/temp1_input",
                          board().option("--fault", "hwmon:hwmon1/temp1:text=-7"))
                        .out);
}

TEST_F(BoardsTest, PartsAreLeftOut) {
    EXPECT_NE(0, shell("ls /dev/bootrom", board().without("rom")).status);
    EXPECT_NE(0, shell("ls /sys/class/hwmon", board().without("hwmon")).status);
    EXPECT_EQ("fan\n", shell("ls /tmp/i2c | grep -x 'eeprom\\|fan'; ls /sys/bus/i2c/devices | grep 0050",
                             board().without("eeprom"))
                           .out);
    const BoardRun run = board().without("rom").option("--fault", "rom:bootrom:fail").run({"/bin/true"});
    EXPECT_EQ(2, run.status);
    EXPECT_THAT(run.err, HasSubstr("no devices of the kind 'rom'"));
}

}  // namespace
