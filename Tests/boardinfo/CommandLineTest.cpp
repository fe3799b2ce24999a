#include "Tools/boardinfo/CommandLine.h"

#include <gtest/gtest.h>

namespace {

using namespace boardinfo;
using std::chrono::milliseconds;

/// What the words come to, with what is printed meanwhile.
struct Reading {
    CommandLine line;
    std::string out{};
    std::string err{};
};

Reading read(std::vector<std::string> words) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Reading reading{readCommandLine(std::move(words))};
    reading.out = testing::internal::GetCapturedStdout();
    reading.err = testing::internal::GetCapturedStderr();
    return reading;
}

TEST(CommandLineTest, WithoutWordsIsOneReportOfTheNewerBoardAsText) {
    const auto options = read({}).line.options;
    ASSERT_TRUE(options);
    EXPECT_EQ(BoardKind::Orca, options->board);
    EXPECT_FALSE(options->json);
    EXPECT_FALSE(options->watch);
}

TEST(CommandLineTest, TakesAllOptionsTogether) {
    const auto options = read({"--board", "hd24", "--json", "--watch", "0.5"}).line.options;
    ASSERT_TRUE(options);
    EXPECT_EQ(BoardKind::Hd24, options->board);
    EXPECT_TRUE(options->json);
    EXPECT_EQ(milliseconds(500), options->watch);
}

TEST(CommandLineTest, WrongWordsAreStatusTwoAndSayOnStandardErrorWhatIsWrong) {
    const std::vector<std::vector<std::string>> all = {
        {"--board"},         {"--board", "mars"}, {"--watch"},      {"--watch", "0"},
        {"--watch", "soon"}, {"--watch", ""},     {"--nothing"},    {"orca"},
        {"--json=maybe"},    {"--watch=-1"},      {"--watch", "1x"}};
    for (const auto& words : all) {
        const Reading reading = read(words);
        EXPECT_FALSE(reading.line.options) << words.back();
        EXPECT_EQ(2, reading.line.status) << words.back();
        EXPECT_EQ("", reading.out) << words.back();
        EXPECT_EQ(0U, reading.err.find("boardinfo: ")) << words.back();
    }
}

TEST(CommandLineTest, HelpAndVersionGoToStandardOutputAndAreNoError) {
    const Reading help = read({"--help"});
    EXPECT_FALSE(help.line.options);
    EXPECT_EQ(0, help.line.status);
    EXPECT_NE(std::string::npos, help.out.find("Usage: boardinfo [OPTIONS]"));
    EXPECT_EQ("", help.err);
    const Reading version = read({"--version"});
    EXPECT_EQ(0, version.line.status);
    EXPECT_EQ(0U, version.out.find("boardinfo 0."));
}

TEST(CommandLineTest, SecondsAreATenthToADay) {
    EXPECT_EQ(milliseconds(100), secondsNamed("0.1"));
    EXPECT_EQ(milliseconds(1250), secondsNamed("1.25"));
    EXPECT_EQ(milliseconds(86400000), secondsNamed("86400"));
    for (const char* text : {"0.09", "86400.1", "-1", "", " 1", "1 ", "1e2", "inf", "nan", "0x10", "1,5"}) {
        EXPECT_FALSE(secondsNamed(text)) << text;
    }
}

}  // namespace
