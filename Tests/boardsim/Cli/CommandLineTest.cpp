#include "Tools/boardsim/Cli/CommandLine.h"

#include <gmock/gmock.h>

namespace {

using boardsim::BoardPart;
using boardsim::CommandLine;
using boardsim::readCommandLine;
using boardsim::ScreenHabit;
using testing::ElementsAre;
using testing::HasSubstr;

/// Reads the words while what is printed is caught.
class CommandLineTest : public testing::Test {
protected:
    CommandLine read(std::vector<std::string> words) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        CommandLine result = readCommandLine(std::move(words));
        out = testing::internal::GetCapturedStdout();
        err = testing::internal::GetCapturedStderr();
        return result;
    }
    void expectUsageError(std::vector<std::string> words, const std::string& message) {
        const CommandLine result = read(std::move(words));
        EXPECT_FALSE(result.run);
        EXPECT_EQ(2, result.status);
        EXPECT_THAT(err, HasSubstr(message));
        EXPECT_EQ("", out);
    }

    std::string out;
    std::string err;
};

TEST_F(CommandLineTest, WhatFollowsTheMarkIsTheProgramsUntouched) {
    const CommandLine result =
        read({"run", "--no-font", "--show", "--", "prog", "--keys", "--", "run", "--help", "", "a b"});
    ASSERT_TRUE(result.run) << err;
    EXPECT_THAT(result.run->program, ElementsAre("prog", "--keys", "--", "run", "--help", "", "a b"));
    EXPECT_TRUE(result.run->show);
}

TEST_F(CommandLineTest, OptionsAreTaken) {
    const CommandLine result = read({"run",
                                     "--keys",
                                     "left 2xcw",
                                     "--frame",
                                     "f",
                                     "--screenshot=s.png",
                                     "--scale",
                                     "3",
                                     "--log",
                                     "-",
                                     "--trace",
                                     "t",
                                     "--timeout",
                                     "0.25",
                                     "--without",
                                     "gpio",
                                     "--without",
                                     "log",
                                     "--without=font",
                                     "--screen",
                                     "full:100",
                                     "--",
                                     "prog"});
    ASSERT_TRUE(result.run) << err;
    EXPECT_EQ(2U, result.run->keys.size());
    EXPECT_EQ("f", result.run->frameFile);
    EXPECT_EQ("s.png", result.run->screenshotFile);
    EXPECT_EQ(3U, result.run->scale);
    EXPECT_EQ("-", result.run->logFile);
    EXPECT_EQ("t", result.run->traceFile);
    EXPECT_EQ(std::chrono::milliseconds(250), result.run->timeout);
    EXPECT_TRUE(result.run->missing.has(BoardPart::Gpio));
    EXPECT_TRUE(result.run->missing.has(BoardPart::Log));
    EXPECT_FALSE(result.run->missing.has(BoardPart::Fpga));
    EXPECT_EQ(ScreenHabit::RunsFull, result.run->screen.habit);
    EXPECT_EQ(100U, result.run->screen.capacity);
}

TEST_F(CommandLineTest, NothingIsSetThatWasNotAskedFor) {
    const CommandLine result = read({"run", "--no-font", "--", "prog"});
    ASSERT_TRUE(result.run) << err;
    EXPECT_TRUE(result.run->keys.empty());
    EXPECT_EQ("", result.run->frameFile);
    EXPECT_EQ(1U, result.run->scale);
    EXPECT_FALSE(result.run->timeout);
    EXPECT_EQ(ScreenHabit::Sound, result.run->screen.habit);
}

TEST_F(CommandLineTest, AFontIsMadeAbsolute) {
    const CommandLine result = read({"run", "--font", ".", "--", "prog"});
    ASSERT_TRUE(result.run) << err;
    EXPECT_EQ('/', result.run->font[0]);
}

TEST_F(CommandLineTest, WrongUsageIsSaidOnStandardErrorWithStatusTwo) {
    expectUsageError({}, "subcommand");
    expectUsageError({"walk"}, "subcommand");
    expectUsageError({"run"}, "no program");
    expectUsageError({"run", "--"}, "no program");
    expectUsageError({"run", "prog"}, "prog");
    expectUsageError({"run", "--bogus", "--", "prog"}, "--bogus");
    expectUsageError({"run", "--keys", "up", "--no-font", "--", "prog"}, "'up'");
    expectUsageError({"run", "--scale", "0", "--no-font", "--", "prog"}, "--scale");
    expectUsageError({"run", "--scale", "x", "--no-font", "--", "prog"}, "--scale");
    expectUsageError({"run", "--timeout", "0", "--no-font", "--", "prog"}, "--timeout");
    expectUsageError({"run", "--timeout", "-1", "--no-font", "--", "prog"}, "--timeout");
    expectUsageError({"run", "--timeout", "nan", "--no-font", "--", "prog"}, "--timeout");
    expectUsageError({"run", "--timeout", "-NaN", "--no-font", "--", "prog"}, "--timeout");
    expectUsageError({"run", "--timeout", "inf", "--no-font", "--", "prog"}, "--timeout");
    expectUsageError({"run", "--timeout", "soon", "--no-font", "--", "prog"}, "--timeout");
    expectUsageError({"run", "--screen", "blue", "--no-font", "--", "prog"}, "one-byte, failing, full");
    expectUsageError({"run", "--font", "/no/such/font.ttf", "--", "prog"}, "/no/such/font.ttf");
    expectUsageError({"run", "--font", "/", "--no-font", "--", "prog"}, "--font");
    expectUsageError({"run", "--frame"}, "--frame");
}

TEST_F(CommandLineTest, AnEmptyNameIsNoFile) {
    for (const char* option : {"--frame", "--screenshot", "--log", "--trace", "--font"}) {
        expectUsageError({"run", option, "", "--", "prog"}, option);
        expectUsageError({"run", std::string(option) + "=", "--", "prog"}, option);
    }
    expectUsageError({"run", "--screen", "", "--no-font", "--", "prog"}, "one-byte, failing, full");
}

TEST_F(CommandLineTest, AnUnknownPartIsAnsweredWithTheKnownOnes) {
    expectUsageError({"run", "--without", "wheels", "--no-font", "--", "prog"},
                     "'wheels'; there are screen, spi, panel-registers, layout, fpga, gpio, log, font, "
                     "font-directory");
}

TEST_F(CommandLineTest, FaultsAreTakenInTheirOrder) {
    const CommandLine result = read({"run", "--fault", "i2c:fan@0x48:nack", "--no-font", "--fault",
                                     "i2c:psu@0x5b:value=3:times=1", "--", "prog"});
    ASSERT_TRUE(result.run) << err;
    ASSERT_EQ(2U, result.run->faults.size());
    EXPECT_EQ("fan@0x48", result.run->faults[0].device);
    EXPECT_EQ("3", result.run->faults[1].value);
    expectUsageError({"run", "--fault", "nack", "--no-font", "--", "prog"}, "want KIND:DEVICE:ACTION");
}

TEST_F(CommandLineTest, TheBoardIsTheOrcaUnlessAnotherIsNamed) {
    EXPECT_EQ("orca", read({"run", "--no-font", "--", "prog"}).run->board);
    EXPECT_EQ("b.json", read({"run", "--no-font", "--board", "b.json", "--", "prog"}).run->board);
    expectUsageError({"run", "--no-font", "--board", "", "--", "prog"}, "--board");
}

TEST_F(CommandLineTest, BoardsAreAllOrOne) {
    EXPECT_EQ("", read({"boards"}).boards);
    const CommandLine one = read({"boards", "hd24"});
    EXPECT_EQ("hd24", one.boards);
    EXPECT_FALSE(one.run);
    expectUsageError({"boards", "raft"}, "no board 'raft'; there are orca, hd24");
    expectUsageError({"boards", "orca", "hd24"}, "hd24");
    expectUsageError({"boards", "--", "prog"}, "boards runs no program");
}

TEST_F(CommandLineTest, HelpAndVersionGoToStandardOutputWithStatusZero) {
    EXPECT_EQ(0, read({"--help"}).status);
    EXPECT_THAT(out, HasSubstr("run"));
    EXPECT_EQ(0, read({"run", "--help"}).status);
    EXPECT_THAT(out, HasSubstr("--screenshot"));
    EXPECT_THAT(out, HasSubstr("boardsim run [OPTIONS] -- PROGRAM [ARG...]"));
    const CommandLine version = read({"--version"});
    EXPECT_EQ(0, version.status);
    EXPECT_FALSE(version.run);
    EXPECT_THAT(out, testing::MatchesRegex("boardsim [0-9.]+\n"));
    EXPECT_EQ("", err);
}

TEST_F(CommandLineTest, ScreenFaultsHaveNames) {
    EXPECT_EQ(ScreenHabit::TakesOneByte, boardsim::screenFaultNamed("one-byte")->habit);
    EXPECT_EQ(ScreenHabit::Fails, boardsim::screenFaultNamed("failing")->habit);
    EXPECT_EQ(0U, boardsim::screenFaultNamed("full")->capacity);
    EXPECT_EQ(15360U, boardsim::screenFaultNamed("full:15360")->capacity);
    for (const char* name : {"", "fullish", "full:", "full:x", "full:-1", "full:1x", "one-byte:2"}) {
        EXPECT_FALSE(boardsim::screenFaultNamed(name)) << name;
    }
}

}  // namespace
