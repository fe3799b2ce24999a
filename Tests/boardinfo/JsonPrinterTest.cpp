#include "Tools/boardinfo/JsonPrinter.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "Tests/boardinfo/SampleReport.h"

namespace {

using namespace boardinfo;
using nlohmann::json;

json parsed(const Report& report) {
    return json::parse(asJson(report, JsonLayout::Indented));
}

TEST(JsonPrinterTest, TellsItsSchemaFirst) {
    EXPECT_EQ(0U,
              asJson(samples::smallReport(), JsonLayout::OneLine).find("{\"schema\":1,\"board\":\"orca\""));
}

TEST(JsonPrinterTest, FixedSectionsAreObjectsWithMembersThatNeedNoQuotes) {
    const json report = parsed(samples::smallReport());
    EXPECT_EQ((json{{"state", "ok"}, {"value", "CT: 0x80"}}), report["identity"]["card_id"]);
    EXPECT_EQ((json{{"state", "failed"}}), report["identity"]["card_serial"]);
    EXPECT_EQ((json{{"state", "not present"}}), report["identity"]["switch_card_id"]);
    EXPECT_EQ((json{{"state", "ok"}, {"value", 47}, {"unit", "°C"}, {"limit", 95}}),
              report["temperatures"]["fpga"]);
    EXPECT_EQ((json{{"state", "ok"}, {"value", true}}), report["sync"]["is_master"]);
    EXPECT_EQ(-0.0625, report["sync"]["drift"]["value"]);
}

TEST(JsonPrinterTest, FoundSectionsAreArraysThatKeepTheirOrderAndNames) {
    const json report = parsed(samples::smallReport());
    EXPECT_EQ((json::array({{{"name", "central_sync"},
                             {"state", "ok"},
                             {"version", "0x00030002"},
                             {"addresses", {"0x00000400", "0x00000440"}}},
                            {{"name", "version_only"},
                             {"state", "ok"},
                             {"version", "0x00010000"},
                             {"addresses", json::array()}}})),
              report["fpga_cores"]);
    EXPECT_EQ(json::array(), report["chips_on_1_wire"]);
}

TEST(JsonPrinterTest, OkTellsWhetherNothingFailed) {
    EXPECT_EQ(false, parsed(samples::smallReport())["ok"]);
    EXPECT_EQ(true, parsed({"hd24", {{"identity", Form::Fixed, {notPresent("card ID")}}}})["ok"]);
}

TEST(JsonPrinterTest, TheSameNameTwiceIsTwoMembersOfAnArray) {
    Section cores{"FPGA cores", Form::Found};
    cores.rows = {Row{"uart", State::Ok}, Row{"uart", State::Ok}};
    EXPECT_EQ(2U, parsed({"orca", {cores}})["fpga_cores"].size());
}

TEST(JsonPrinterTest, WhatIsNoUtf8BecomesTheReplacementCharacter) {
    Section cores{"FPGA cores", Form::Found};
    cores.rows = {Row{"a\xFF\"\n", State::Ok}};
    EXPECT_EQ("a\uFFFD\"\n", parsed({"orca", {cores}})["fpga_cores"][0]["name"]);
}

TEST(JsonPrinterTest, OneLineIsOneLineAndSaysTheSame) {
    const std::string line = asJson(samples::smallReport(), JsonLayout::OneLine);
    EXPECT_EQ(line.size() - 1, line.find('\n'));
    EXPECT_EQ(parsed(samples::smallReport()), json::parse(line));
    EXPECT_EQ('\n', asJson(samples::smallReport(), JsonLayout::Indented).back());
}

}  // namespace
