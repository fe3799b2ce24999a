// The sync block and the registers that tell temperatures, as a program finds them in the mapped registers.
#include <gmock/gmock.h>

#include <array>
#include <sstream>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::board;
using support::BoardRun;
using testing::Contains;
using testing::HasSubstr;

const std::string kClient = CLIENT;

/// Prints a word of the registers in hexadecimal.
std::string word(const std::string& offset) {
    return "od -An -tx4 -j " + offset + " -N 4 /dev/fpga; ";
}

std::vector<unsigned long> numbers(const BoardRun& run) {
    std::istringstream text(run.out);
    std::vector<unsigned long> all;
    for (unsigned long each = 0; text >> std::hex >> each;) {
        all.push_back(each);
    }
    return all;
}

BoardRun shell(const std::string& script, const support::VirtualBoard& on = board()) {
    return on.run({"/bin/sh", "-c", script});
}

/// Frames since midnight.
unsigned long framesIn(unsigned long low, unsigned long high, unsigned long rate) {
    const auto digits = [](unsigned long bits) { return (bits & 0xF) + 10 * (bits >> 8 & 0x7); };
    const unsigned long frames = (low & 0xF) + 10 * (low >> 8 & 0x3);
    const unsigned long minutes = digits(high) + 60 * ((high >> 16 & 0xF) + 10 * (high >> 24 & 0x3));
    return (minutes * 60 + digits(low >> 16)) * rate + frames;
}

TEST(SyncTest, TheRegistersAreThereWithTheFirstInstructionOfTheProgram) {
    EXPECT_THAT(numbers(shell(word("0x404") + word("0x40C") + word("0x410") + word("0x440") + word("0xC00"))),
                testing::ElementsAre(0x3C00042A, 0x04000001, 7, 0x5AB, 0x3D00));
    EXPECT_THAT(
        numbers(shell(word("0x404") + word("0x40C") + word("0x41C"), board().option("--board", "hd24"))),
        testing::ElementsAre(0x6F000017, 0, 0x3C00042A));
}

TEST(SyncTest, TheTimeCodeRunsWithTheClock) {
    for (const auto& [name, rate] : {std::pair("orca", 25UL), {"hd24", 30UL}}) {
        const std::string read = word("0x43C") + word("0x438") + word("0x434");
        const std::vector<unsigned long> seen =
            numbers(shell("date +%s%N | cut -b 1-13 | xargs printf '%x\\n'; " + read + "sleep 1; " + read +
                              "date +%s%N | cut -b 1-13 | xargs printf '%x\\n'",
                          board().option("--board", name)));
        ASSERT_EQ(8U, seen.size());
        const unsigned long passed = framesIn(seen[5], seen[4], rate) - framesIn(seen[2], seen[1], rate);
        const unsigned long longest = (seen[7] - seen[0]) * rate / 1000 + 1;
        EXPECT_GE(passed, rate - 1) << name;
        EXPECT_LE(passed, longest) << name;
        EXPECT_GE(seen[6] - seen[3], rate - 1) << name;
        EXPECT_LE(seen[6] - seen[3], longest) << name;
    }
}

TEST(SyncTest, TheTimeCodeRunsOnFromWhatAProgramWrote) {
    // 23:59:59 at most one frame before the end of the day; the user bits travel along.
    const std::vector<unsigned long> seen = numbers(shell(
        kClient + " set:0x43c,0x82736559 set:0x438,0x15293214; sleep 0.2; " + word("0x43C") + word("0x438")));
    ASSERT_EQ(2U, seen.size());
    EXPECT_EQ(0x80706050U, seen[0]);
    EXPECT_EQ(0x10203010U, seen[1] & 0xF0F0F0F0);
}

TEST(SyncTest, ATracedProgramSeesItRunToo) {
    const BoardRun run = board().traced().run({kClient, "set:0x434,5", "set:0x410,9"});
    EXPECT_THAT(run.trace, Contains(HasSubstr("fpga write 0x0410 32 0x00000009")));
    EXPECT_THAT(run.trace, Contains(HasSubstr("subsys_hps_central_sync refused fpga write 0x0434 32 "
                                              "0x00000005: it can only be read")));
}

TEST(SyncTest, ACutRegisterSpaceDoesNotStopTheBoard) {
    EXPECT_EQ(0, shell(": > /dev/fpga; sleep 0.3; test $(stat -c %s /dev/fpga) = 65536").status);
}

TEST(SyncTest, WithoutTheBlockItsCoreIsNotInTheLayout) {
    const BoardRun run =
        shell("grep -c central_sync /sys/bus/avalon/devices/fpga/layout", board().without("sync"));
    EXPECT_EQ("0\n", run.out);
    EXPECT_THAT(numbers(shell(word("0x404"), board().without("sync"))), testing::ElementsAre(0));
}

TEST(SyncTest, FaultsShowInTheRegisters) {
    EXPECT_THAT(numbers(shell(word("0xC00") + word("0x440"),
                              board()
                                  .option("--fault", "temp:subsys_hps_pio_temp_fpga:value=96")
                                  .option("--fault", "temp:misc_pio:raw=0x12345678"))),
                testing::ElementsAre(0x6000, 0x12345678));
    EXPECT_THAT(numbers(shell(word("0x438") + "sleep 0.2; " + word("0x438") + word("0x43C"),
                              board().option("--fault", "sync:subsys_hps_central_sync:stopped"))),
                testing::ElementsAre(0x30401020, 0x30401020, 0x71805060));
    EXPECT_THAT(
        numbers(shell(word("0x438"), board().option("--fault", "sync:subsys_hps_central_sync:nonsense"))),
        testing::ElementsAre(0xFFFFFFFF));
}

}  // namespace
