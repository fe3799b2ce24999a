// Whole boards with one device that fails or answers nonsense.
#include <gmock/gmock.h>

#include "Tests/EndToEnd/WholeBoardRun.h"
#include "Tools/boardsim/Board/BoardDescription.h"

namespace {

using e2e::Answers;
using e2e::Expectation;
using e2e::runWholeBoard;
using e2e::WholeBoardRun;
using support::board;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::StartsWith;

const std::string kFailed = "failed";
const std::string kNoVersions = "failed 0  0 0";
const std::string kNoQsfp = "err Core: Failed to initialize QSFP GPIO";
const std::string kSyncFailed = "err Core: Failed to initialize led_sync ";
const std::string kEthLedFailed = "err Core: Failed to initialize eth_led ";

/// A chip on I2C: what is to be seen when it is silent, and which of its answers are the bytes that it gives.
struct Chip {
    const char* name;  ///< as faults call it
    std::vector<std::string> log;
    Answers silent;
    Answers reading5C;  ///< all bytes are 0x5C
    Answers readingFF;
};

const Chip kChips[] = {
    {"video_enc", {}, {{"video", kFailed}}, {{"video", "ok 0x5c"}}, {{"video", "ok 0xff"}}},
    {"sdi_temp",
     {},
     {{"sdi", "failed of 80"}},
     {{"sdi", "ok 92 of 80"}},  // 92 5/16
     {{"sdi", "ok 0 of 80"}}},  // -1/16
    {"fan_radial_temp", {}, {{"fan", "failed of 60"}}, {{"fan", "ok 92 of 60"}}, {{"fan", "ok 0 of 60"}}},
    {"fan_oled_temp", {}, {{"oled", "failed of 50"}}, {{"oled", "ok 92 of 50"}}, {{"oled", "ok 0 of 50"}}},
    {"eth_temp", {}, {{"eth", "failed of 75"}}, {{"eth", "ok 92 of 75"}}, {{"eth", "ok 0 of 75"}}},
    {"eeprom", {}, {{"versions", kNoVersions}}, {{"versions", kNoVersions}}, {{"versions", kNoVersions}}},
    {"psu", {}, {}, {}, {}},
    // Its shadow begins as it says; what is written is not read back, but for the reset signals, which are
    // high.
    {"eth_led", {kEthLedFailed}, {{"psu-led", kFailed}, {"reset", kFailed}}, {}, {}},
    {"led_sync", {kSyncFailed}, {{"sync", kFailed}}, {{"sync", "ok 0x5c"}}, {{"sync", "ok 0xff"}}},
    {"qsfp0_0@0x3e", {kNoQsfp}, {{"qsfp0_0", kFailed}}, {{"qsfp0_0", "ok 0x5c"}}, {{"qsfp0_0", "ok 0xff"}}},
    {"qsfp0_1@0x3e", {kNoQsfp}, {{"qsfp0_1", kFailed}}, {{"qsfp0_1", "ok 0x5c"}}, {{"qsfp0_1", "ok 0xff"}}},
    {"qsfp1_0@0x3e", {kNoQsfp}, {{"qsfp1_0", kFailed}}, {{"qsfp1_0", "ok 0x5c"}}, {{"qsfp1_0", "ok 0xff"}}},
    {"qsfp1_1@0x3e", {kNoQsfp}, {{"qsfp1_1", kFailed}}, {{"qsfp1_1", "ok 0x5c"}}, {{"qsfp1_1", "ok 0xff"}}},
};

const Expectation kRomFails = {
    {"err CPCardInterface: transfered only -1 / 6 bytes",
     "err CPCardInterface: transfered only -1 / 12 bytes",
     "err CPCardInterface: transfered only -1 / 56 bytes", "err CPCardInterface: invalid ROM data"},
    {{"mac", kFailed}, {"card-id", kFailed}, {"rom", kFailed}}};

/// The ROM answers, but not with what makes a card's identity.
Expectation invalidRom(const std::string& why, const Answers& answers = {}) {
    Expectation expected = {{"err CPCardInterface: invalid " + why, "err CPCardInterface: invalid ROM data"},
                            answers};
    expected.answers["rom"] = kFailed;
    return expected;
}

struct Case {
    std::string variant;
    std::string fault;
    Expectation expected;
};

void PrintTo(const Case& one, std::ostream* out) {
    *out << one.variant << ' ' << one.fault;
}

/// What both boards have.
const std::pair<const char*, Expectation> kEverywhere[] = {
    {"mdio:ethernet_mdio@0:no-answer", {{}, {{"phy-0", "ok 0xffff"}}}},
    {"mdio:ethernet_mdio@1:no-answer", {{}, {{"phy-1", "ok 0xffff"}}}},
    {"mii:eth0:no-answer", {{}, {{"config-phy-0", "ok 0xffff"}}}},
    {"mii:eth1:no-answer", {}},
    {"net:eth0:carrier-down", {{}, {{"carrier-0", kFailed}, {"link-0", "failed 0"}}}},
    {"net:eth1:carrier-down", {{}, {{"carrier-1", kFailed}, {"link-1", "failed 0"}}}},
    {"net:inbd:refuse", {{}, {{"fibre-0", kFailed}}}},
    {"net:pattern:refuse", {{}, {{"pattern-lane", kFailed}}}},
    {"gpio:oled_pio+3:taken", {}},
    {"gpio:oled_pio+3:stuck=0", {}},
    {"rom:bootrom:fail", kRomFails},
    {"rom:bootrom:short-read", {}},
    {"hwmon:hwmon0/temp1:fail", {{}, {{"hwmon0/temp1", kFailed}}}},
    {"hwmon:hwmon0/temp1:absent", {{}, {{"hwmon0/temp1", kFailed}}}},
    {"hwmon:hwmon0/temp1:text=hot", {{}, {{"hwmon0/temp1", kFailed}}}},
    {"hwmon:hwmon0/temp1:text=-273150", {{}, {{"hwmon0/temp1", "ok -273150"}}}},
};

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const Chip& chip : kChips) {
        const std::string name = std::string("i2c:") + chip.name;
        for (const char* silence : {":nack", ":refuse", ":timeout", ":lost"}) {
            cases.push_back({"orca", name + silence, {chip.log, chip.silent}});
        }
        cases.push_back({"orca", name + ":value=0x5c", {{}, chip.reading5C}});
        cases.push_back({"orca", name + ":value=0xff", {{}, chip.readingFF}});
    }
    for (const char* variant : {"orca", "hd24"}) {
        for (const auto& [fault, expected] : kEverywhere) {
            cases.push_back({variant, fault, expected});
        }
    }
    const std::string orcasWrongType = "CT: 0x7F Ver: 0001.02.0007 (14/11/2023)";
    const std::string hd24sWrongType = "CT: 0x7F Ver: 0002.01.002A (21/03/2017)";
    cases.insert(
        cases.end(),
        {
            {"orca", "mac:subsys_hps_eth_mac:reset", {}},
            {"hd24", "mac:eth_mac:reset", {}},
            {"orca", "w1:22-0000001a2b3c:unplug", {}},
            {"hd24", "w1:22-0000004d5e6f:unplug", {}},
            {"orca", "sync:subsys_hps_central_sync:stopped", {}},
            {"hd24", "sync:central_sync:stopped", {}},
            {"orca", "sync:subsys_hps_central_sync:nonsense", {}},
            {"hd24", "sync:central_sync:nonsense", {}},
            {"orca",
             "temp:subsys_hps_pio_temp_fpga:raw=0xffffffff",
             {{}, {{"fpga", "ok 16777215 of 95"}}}},  // without a sign: meant
            {"orca", "temp:subsys_hps_pio_temp_tile0:raw=0xff", {{}, {{"tile0", "ok 0 of 95"}}}},
            {"orca", "temp:subsys_hps_pio_temp_tile1:raw=0x5c5c5c5c", {{}, {{"tile1", "ok 6052956 of 95"}}}},
            {"hd24", "temp:misc_pio:raw=0xffffffff", {{}, {{"fpga", "ok 127"}}}},
            {"hd24", "temp:misc_pio:raw=0", {{}, {{"fpga", "ok -128"}}}},
            {"orca", "rom:bootrom:corrupt=16", invalidRom("MAC: FD:00:5E:10:20:30")},
            {"hd24", "rom:bootrom:corrupt=16", invalidRom("MAC: FD:00:5E:0A:0B:0C")},
            {"orca", "rom:bootrom:corrupt=31",
             invalidRom("version: " + orcasWrongType, {{"card-id", "ok " + orcasWrongType}})},
            {"hd24", "rom:bootrom:corrupt=31",
             invalidRom("version: " + hd24sWrongType, {{"card-id", "ok " + hd24sWrongType}})},
        });
    return cases;
}

WholeBoardRun runWith(const std::string& fault, const std::string& variant) {
    return runWholeBoard(board().option("--board", variant).option("--fault", fault), variant);
}

const std::vector<std::string>& healthyAccessors(const std::string& variant) {
    static std::map<std::string, WholeBoardRun> runs;
    const auto [found, isNew] = runs.try_emplace(variant);
    if (isNew) {
        found->second = runWholeBoard(board().option("--board", variant), variant);
    }
    return found->second.accessors;
}

class BoardWithAFault : public testing::TestWithParam<Case> {};

TEST_P(BoardWithAFault, IsBuiltAndShowsItAtThatDeviceOnly) {
    const auto& [variant, fault, expected] = GetParam();
    const WholeBoardRun run = runWith(fault, variant);
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_THAT(run.log, ElementsAreArray(expected.log));
    EXPECT_THAT(run.accessors, ElementsAreArray(e2e::replaced(healthyAccessors(variant), expected.answers)));
}

INSTANTIATE_TEST_SUITE_P(Faults, BoardWithAFault, testing::ValuesIn(allCases()), [](const auto& one) {
    return e2e::testName(one.param.variant + " " + one.param.fault);
});

TEST(WholeBoardFaultRows, NameEveryChipOfTheBoard) {
    const boardsim::I2cDescription& i2c = boardsim::orcaBoard().i2c;
    std::vector<std::string> chips;
    for (const boardsim::I2cDevice& device : i2c.devices) {
        chips.push_back(device.name);
        for (const boardsim::I2cBusName& bus : i2c.buses) {
            if (device.name.empty() && bus.number == device.bus) {
                chips.back() = bus.name + "@0x3e";
            }
        }
    }
    std::vector<std::string> rows;
    for (const Chip& chip : kChips) {
        rows.emplace_back(chip.name);
    }
    EXPECT_THAT(rows, testing::UnorderedElementsAreArray(chips));
}

TEST(WholeBoardFaultTest, AManagementBusThatNeverEndsIsGivenUp) {
    for (const char* variant : {"orca", "hd24"}) {
        const WholeBoardRun run = runWith("mdio:ethernet_mdio:busy", variant);
        EXPECT_EQ(0, run.status) << run.err;
        EXPECT_THAT(run.log, ElementsAre(StartsWith("local0.info CPCardInterface: MDIO: timeout: 0x"),
                                         StartsWith("local0.info CPCardInterface: MDIO: timeout: 0x")));
        EXPECT_THAT(run.accessors, ElementsAreArray(e2e::replaced(healthyAccessors(variant),
                                                                  {{"phy-0", kFailed}, {"phy-1", kFailed}})));
    }
}

TEST(WholeBoardFaultTest, ResetSignalsThatNeverComeAreWaitedForWithoutEndOnPurpose) {
    const support::BoardRun run =
        board().option("--fault", "i2c:eth_led:value=0").timeout("1").run({WHOLE_BOARD, "orca"});
    EXPECT_EQ(124, run.status) << run.err;
}

TEST(WholeBoardFaultTest, ABoardOnWhichNothingAnswersIsBuilt) {
    support::VirtualBoard silent = board().without("gpio").without("mii").without("w1").without("cpld");
    for (const Chip& chip : kChips) {
        silent.option("--fault", std::string("i2c:") + chip.name + ":nack");
    }
    const WholeBoardRun run = runWholeBoard(silent, "orca");
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_THAT(run.log,
                ElementsAre("err CPCardInterface: could not open gpio!", kNoQsfp, kSyncFailed, kEthLedFailed,
                            "err CPCardInterface: could not find: /sys/bus/avalon/devices/cpld/layout"));
}

}  // namespace
