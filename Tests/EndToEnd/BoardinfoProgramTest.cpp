// boardinfo among other programs, and in places where not all is as it should be.
#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <string>

#include "Tests/EndToEnd/Boardinfo.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/EepromImage.h"
#include "Tools/boardsim/Board/Json/BoardJson.h"

namespace {

using support::board;
using support::BoardRun;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kPython = "/usr/bin/env";

BoardRun drive(std::vector<std::string> words) {
    std::vector<std::string> command = {kPython, "python3", BOARDINFO_DRIVER};
    command.insert(command.end(), words.begin(), words.end());
    command.push_back(e2e::kBoardinfo);
    return board().run(command);
}

BoardRun inShell(const std::string& script) {
    return board().run({"/bin/sh", "-c", script, e2e::kBoardinfo});
}

TEST(BoardinfoWatch, EndsWithTheLastReportsStatusWhenItIsToldTo) {
    for (const char* signal : {"SIGINT", "SIGTERM"}) {
        const BoardRun run = drive({"signal", signal});
        EXPECT_EQ("whole reports: True status: 0\n", run.out) << signal << run.err;
    }
}

TEST(BoardinfoWatch, EndsWithoutAWordWhenNobodyReadsAnyMore) {
    EXPECT_EQ("status: 0 said: \n", drive({"hang-up"}).out);
}

TEST(BoardinfoWatch, SeparatesReportsInAPipeByAnEmptyLine) {
    const BoardRun run = inShell(R"("$0" --watch 0.1 | awk '/^board/ { n++ } n == 3 { exit } { print }')");
    EXPECT_EQ(0, run.status);
    const std::string second = "\n\nboard orca\n";
    const auto at = run.out.find(second);
    ASSERT_NE(std::string::npos, at);
    EXPECT_EQ(std::string::npos, run.out.find(second, at + 1));
    EXPECT_EQ(0U, run.out.find("board orca\n"));
}

TEST(BoardinfoWatch, RedrawsATerminalWithoutScrollingIt) {
    std::string said;
    const std::string command =
        "python3 " BOARDINFO_DRIVER " terminal " BOARDSIM " run -- " + e2e::kBoardinfo + " 2>&1";
    FILE* driver = popen(command.c_str(), "r");
    std::array<char, 4096> part;
    while (std::fgets(part.data(), part.size(), driver) != nullptr) {
        said += part.data();
    }
    EXPECT_EQ(0, pclose(driver));
    EXPECT_EQ(
        "status: 0\n"
        "lines: 19 19 more: True\n"
        "colours: True status: 0\n"
        "NO_COLOR: False status: 0\n"
        "dumb: False status: 0\n",
        said);
}

TEST(BoardinfoProgram, SaysThatTheReportCannotBeWritten) {
    const BoardRun run = inShell("exec \"$0\" > /dev/full");
    EXPECT_EQ(1, run.status);
    EXPECT_THAT(run.err, HasSubstr("boardinfo: the report cannot be written: No space left on device\n"));
}

TEST(BoardinfoProgram, StandsItsStandardDescriptorsClosed) {
    EXPECT_EQ(
        "without 0: 0 True \n"
        "without 1: 1 False boardinfo: the report cannot be written: Bad file descriptor\n"
        "without 2: 0 True \n"
        "without 01: 1 False boardinfo: the report cannot be written: Bad file descriptor\n"
        "without 12: 1 False \n"
        "without 012: 1 False \n",
        drive({"files"}).out);
}

/// A place that is not as it should be, made by a shell on the board; the script makes sure that it is.
struct Place {
    const char* name;
    const char* script;
};

class BoardinfoPlace : public testing::TestWithParam<Place> {};

TEST_P(BoardinfoPlace, ChangesNothing) {
    const BoardRun run = inShell(std::string(GetParam().script) + " || exit 99\nexec \"$0\" --json");
    EXPECT_EQ(0, run.status) << run.err;
    const auto report = nlohmann::json::parse(run.out, nullptr, false);
    ASSERT_FALSE(report.is_discarded()) << run.out;
    EXPECT_EQ(true, report["ok"]);
    EXPECT_EQ("sdi_temp", report["names_on_i2c"][12]["name"]);
}

INSTANTIATE_TEST_SUITE_P(
    Places, BoardinfoPlace,
    testing::Values(Place{"FewDescriptors", "ulimit -n 32"},
                    Place{"FullTmp",
                          "mount -o remount,size=4k /tmp && dd if=/dev/zero of=/tmp/all bs=4k count=1 && "
                          "! echo more > /tmp/more"},
                    Place{"ReadOnlyLogDirectory",
                          "mkdir -p /opt/fw/log && mount -t tmpfs -o ro none /opt/fw/log && "
                          "! touch /opt/fw/log/file"},
                    Place{"NoWorkingDirectory", "mkdir /tmp/gone && cd /tmp/gone && rmdir /tmp/gone"},
                    Place{"BareEnvironment", "unset PATH HOME TERM LANG"}),
    [](const auto& place) { return std::string(place.param.name); });

TEST(BoardinfoProgram, ShowsAnOrdinaryUserWhatItShowsToRoot) {
    e2e::Shown roots = e2e::shownAsJson();
    e2e::Shown users = e2e::shownAsJson(board().asUser());
    EXPECT_EQ(0, users.status);
    EXPECT_EQ(1U, roots.report.erase("sync"));  // its time runs
    EXPECT_EQ(1U, users.report.erase("sync"));
    EXPECT_EQ(roots.report, users.report);
}

TEST(BoardinfoProgram, WhatTheLibraryPrintsDoesNotGetIntoTheReport) {
    const support::TemporaryDirectory files;
    boardsim::BoardDescription description = *boardsim::builtInBoard("orca");
    for (boardsim::I2cDevice& device : description.i2c.devices) {
        if (device.identity) {
            constexpr auto kUnknown = static_cast<boardsim::EepromFieldType>(9);
            device.identity.reset();
            device.contents = boardsim::encodeEeprom(std::array{boardsim::EepromField{kUnknown, "body"}});
        }
    }
    std::ofstream(files.file("board.json")) << boardsim::writeBoard(description);
    const BoardRun run = e2e::showBoard({"--json"}, board().option("--board", files.file("board.json")));
    EXPECT_THAT(run.err, HasSubstr("unknown field of type: 9"));
    const auto report = nlohmann::json::parse(run.out, nullptr, false);
    ASSERT_FALSE(report.is_discarded()) << run.out;
    EXPECT_EQ("failed", report["eeprom"]["device_serial"]["state"]);
    EXPECT_EQ(1, run.status);
}

}  // namespace
