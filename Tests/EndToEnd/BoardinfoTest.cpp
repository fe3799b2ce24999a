#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <regex>

#include "Tests/EndToEnd/Boardinfo.h"

namespace {

using e2e::rowsThatAre;
using e2e::showBoard;
using e2e::Shown;
using e2e::shownAsJson;
using support::board;
using support::BoardRun;
using support::VirtualBoard;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAreArray;

/// What counts while the tool runs, with its digits gone.
std::string withoutClocks(const std::string& text) {
    std::string still = std::regex_replace(text, std::regex("(sync word +)0x[0-9A-F]{8}"), "$010x########");
    still = std::regex_replace(still, std::regex("(time code +)[0-9:]{11}"), "$01##:##:##:##");
    return std::regex_replace(still, std::regex("milliseconds [0-9]+"), "milliseconds ###");
}

/// Compares with a golden text; VALEN_UPDATE_GOLDEN=1 writes it anew.
void expectGolden(const std::string& name, const std::string& text) {
    const std::string path = std::string(GOLDEN_DIRECTORY) + "/" + name;
    if (std::getenv("VALEN_UPDATE_GOLDEN") != nullptr) {
        std::ofstream(path) << text;
    }
    std::ifstream golden(path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(golden), {}), text) << path;
}

TEST(BoardinfoEndToEnd, ShowsTheNewerBoard) {
    const BoardRun run = showBoard({});
    EXPECT_EQ(0, run.status);
    expectGolden("boardinfo-orca.txt", withoutClocks(run.out));
}

TEST(BoardinfoEndToEnd, SaysWhatTheReadmeShows) {
    std::ifstream file(README);
    const std::string readme(std::istreambuf_iterator<char>(file), {});
    const std::string command = "$ ./dev sim run -- boardinfo | sed -n '/^temperatures/,/^$/p'\n";
    const auto at = readme.find(command);
    ASSERT_NE(std::string::npos, at);
    const auto begin = at + command.size();
    const std::string shown = readme.substr(begin, readme.find("```", begin) - begin);
    EXPECT_EQ(0U, shown.find("temperatures\n"));
    EXPECT_THAT(showBoard({}).out, HasSubstr("\n\n" + shown + "\n"));
}

TEST(BoardinfoEndToEnd, AHealthyBoardIsNoReasonToLogAnError) {
    const BoardRun run = showBoard({});
    EXPECT_THAT(run.log, Not(Contains(HasSubstr(".err "))));
    EXPECT_THAT(run.log, Not(IsEmpty()));
}

TEST(BoardinfoEndToEnd, TheSameBoardAsTheOlderKindLacksWhatOnlyTheNewerHas) {
    const auto [status, report] = shownAsJson(board(), {"--board", "hd24"});
    EXPECT_EQ(0, status);
    EXPECT_EQ("hd24", report["board"]);
    EXPECT_THAT(rowsThatAre("not present", report),
                testing::IsSupersetOf({"temperatures.sdi", "temperatures.fan", "temperatures.tile_0",
                                       "expanders.led_sync", "expanders.qsfp0_0", "eeprom.device_serial"}));
    EXPECT_THAT(rowsThatAre("failed", report), IsEmpty());
}

TEST(BoardinfoEndToEnd, TextAndJsonTellTheSameRows) {
    const std::string text = showBoard({}).out;
    const auto [status, report] = shownAsJson();
    const auto lines = [&](const std::string& what) {
        std::ptrdiff_t count = 0;
        for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
            ++count;
        }
        return count;
    };
    const auto rows = rowsThatAre("not present", report);
    const auto emptySections = std::count_if(report.begin(), report.end(), [](const nlohmann::json& section) {
        return section.is_array() && section.empty();
    });
    EXPECT_EQ(lines("  not present\n"), static_cast<std::ptrdiff_t>(rows.size()) + emptySections);
}

/// A part of the board that is taken away, and rows that are not present without it. Nothing ever fails for
/// want of it.
struct Absence {
    const char* part;
    std::vector<std::string> rows;
    std::vector<std::string> emptySections{};
};

class BoardinfoWithout : public testing::TestWithParam<Absence> {};

TEST_P(BoardinfoWithout, APartSaysNotPresentWhereItWouldBe) {
    const auto [status, report] = shownAsJson(board().without(GetParam().part));
    EXPECT_EQ(0, status) << report.dump(2);
    EXPECT_EQ(true, report["ok"]);
    EXPECT_THAT(rowsThatAre("failed", report), IsEmpty());
    EXPECT_THAT(rowsThatAre("not present", report), testing::IsSupersetOf(GetParam().rows));
    for (const std::string& section : GetParam().emptySections) {
        EXPECT_EQ(nlohmann::json::array(), report[section]) << section;
    }
}

const std::vector<std::string> kInFpga = {"identity.fpga_version", "temperatures.fpga", "temperatures.tile_0",
                                          "temperatures.tile_1",   "sync.sync_word",    "sync.sync_id",
                                          "sync.sync_master",      "sync.is_master",    "sync.time_code"};

INSTANTIATE_TEST_SUITE_P(
    Parts, BoardinfoWithout,
    testing::Values(Absence{"fpga", kInFpga, {"phys_on_mdio"}},
                    Absence{"layout", kInFpga, {"fpga_cores", "phys_on_mdio"}},
                    Absence{"cpld", {"identity.cpld_version"}, {"cpld_cores"}},
                    Absence{"w1", {"identity.unique_number"}, {"chips_on_1_wire"}},
                    Absence{"mii", {"configuration_phys.port_0", "configuration_phys.port_1"}},
                    Absence{"i2c",
                            {"temperatures.sdi", "temperatures.fan", "temperatures.oled",
                             "temperatures.ethernet", "expanders.qsfp0_0", "expanders.qsfp0_1",
                             "expanders.qsfp1_0", "expanders.qsfp1_1", "expanders.led_sync",
                             "expanders.eth_led", "eeprom.device_serial", "eeprom.pcb_version"},
                            {"names_on_i2c"}},
                    Absence{"gpio", {}}, Absence{"screen", {}}, Absence{"panel-registers", {}},
                    Absence{"log", {}}, Absence{"font-directory", {}}),
    [](const auto& absence) {
        std::string name = absence.param.part;
        std::erase(name, '-');
        return name;
    });

/// A device that is there and does not do its work, and the rows that fail for it.
struct Failure {
    const char* name;
    const char* fault;
    std::vector<std::string> rows;
};

class BoardinfoFailure : public testing::TestWithParam<Failure> {};

TEST_P(BoardinfoFailure, OfADeviceIsItsRowsAndTheStatus) {
    const auto [status, report] = shownAsJson(board().option("--fault", GetParam().fault));
    EXPECT_EQ(1, status);
    EXPECT_EQ(false, report["ok"]);
    EXPECT_THAT(rowsThatAre("failed", report), ElementsAreArray(GetParam().rows));
}

INSTANTIATE_TEST_SUITE_P(
    Devices, BoardinfoFailure,
    testing::Values(Failure{"SdiSensor", "i2c:sdi_temp:nack", {"temperatures.sdi"}},
                    Failure{"FanBus", "i2c:fan:lost", {"temperatures.fan", "temperatures.oled"}},
                    Failure{"EthernetSensor", "i2c:eth_temp:refuse", {"temperatures.ethernet"}},
                    Failure{"QsfpExpander", "i2c:qsfp1_0@0x3e:nack", {"expanders.qsfp1_0"}},
                    Failure{"SyncExpander", "i2c:led_sync:nack", {"expanders.led_sync"}},
                    Failure{"EthernetLedExpander", "i2c:eth_led:timeout", {"expanders.eth_led"}},
                    Failure{"MdioMaster", "mdio:ethernet_mdio:busy", {"phys_on_mdio.ethernet_mdio"}},
                    Failure{"Thermometer", "w1:22-00000052f00d:crc", {"chips_on_1_wire.22-00000052f00d"}},
                    Failure{"IdentityEeprom", "w1:2d-00000a1b2c3d:crc", {"chips_on_1_wire.2d-00000a1b2c3d"}}),
    [](const auto& failure) { return std::string(failure.param.name); });

TEST(BoardinfoEndToEnd, APhyThatDoesNotAnswerIsNotListed) {
    const auto [status, report] = shownAsJson(board().option("--fault", "mdio:ethernet_mdio@0:no-answer"));
    EXPECT_EQ(0, status);
    ASSERT_EQ(1U, report["phys_on_mdio"].size());
    EXPECT_EQ("PHY 1", report["phys_on_mdio"][0]["name"]);
}

TEST(BoardinfoEndToEnd, ALinkThatIsDownIsToldAndNoFailure) {
    const auto [status, report] = shownAsJson(board().option("--fault", "mdio:ethernet_mdio@1:link-down"));
    EXPECT_EQ(0, status);
    EXPECT_EQ("down", report["phys_on_mdio"][1]["link"]);
}

TEST(BoardinfoEndToEnd, WritesNoRegisterOfThePhysAndOfTheFpga) {
    const BoardRun run = showBoard({}, board().traced());
    EXPECT_EQ(0, run.status);
    EXPECT_THAT(run.trace, Contains(HasSubstr("mdio read phy 1 reg 17")));
    EXPECT_THAT(run.trace, Not(Contains(HasSubstr("mdio write"))));
    constexpr const char* kMdioCommand = "fpga write 0x0800 ";
    for (const std::string& line : run.trace) {
        EXPECT_TRUE(line.find("fpga write") == std::string::npos ||
                    line.find(kMdioCommand) != std::string::npos)
            << line;
    }
}

TEST(BoardinfoEndToEnd, WrongUsageTouchesNoBoard) {
    const BoardRun run = showBoard({"--board", "mars"}, board().traced());
    EXPECT_EQ(2, run.status);
    EXPECT_EQ("", run.out);
    EXPECT_THAT(run.err, HasSubstr("--board"));
    EXPECT_THAT(run.log, IsEmpty());
    EXPECT_THAT(run.trace, IsEmpty());
}

}  // namespace
