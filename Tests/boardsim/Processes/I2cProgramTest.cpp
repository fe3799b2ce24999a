// What the I2C buses of the board are to a program's memory, processes and threads.
#include <gmock/gmock.h>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;

TEST(I2cProgramTest, MemoryThatIsNotThereIsABadAddress) {
    const BoardRun run = board().run({I2C_CLIENT, "bad-memory"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_EQ(
        "functions to nowhere: Bad address\n"
        "request from nowhere: Bad address\n"
        "messages from nowhere: Bad address\n"
        "value to nowhere: Bad address\n"
        "value to where nobody may write: Bad address\n"
        "a terminal's request: Inappropriate ioctl for device\n",
        run.out);
}

TEST(I2cProgramTest, AChildSharesTheOpeningAndUsesItsOwnMemory) {
    EXPECT_EQ("child: 1 0x77\n", board().run({I2C_CLIENT, "in-child"}).out);
}

TEST(I2cProgramTest, ThreadsMayUseABusAtTheSameTime) {
    EXPECT_EQ("wrong: 0\n", board().run({I2C_CLIENT, "in-threads"}).out);
}

}  // namespace
