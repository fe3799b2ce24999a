// Whole boards on which every device is there, and on which each device in turn is not.
#include <gmock/gmock.h>

#include <fstream>
#include <map>

#include "Tests/EndToEnd/WholeBoardRun.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/boardsim/Support/RandomBoard.h"
#include "Tools/boardsim/Board/Json/BoardJson.h"

namespace {

using boardsim::BoardDescription;
using e2e::Expectation;
using e2e::runWholeBoard;
using e2e::WholeBoardRun;
using support::board;
using testing::Contains;
using testing::Each;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

struct Variant {
    const char* name;
    const BoardDescription& (*description)();
    /// What is to be seen without a device; a device that is not named here is not missed.
    std::map<std::string, Expectation> without;
};

const std::string kNoLayout = "err CPCardInterface: could not find: /sys/bus/avalon/devices/fpga/layout";
const std::string kNoTemperature = "err Cardcontroller: pio_temp_fpga not found!";
const std::string kNoQsfp = "err Core: Failed to initialize QSFP GPIO";
const std::string kSyncNotFound = "err Core: Unable to find i2c device: led_sync";
const std::string kSyncFailed = "err Core: Failed to initialize led_sync ";
const std::string kEthLedNotFound = "err Core: Unable to find i2c device: eth_led";
const std::string kEthLedFailed = "err Core: Failed to initialize eth_led ";
const std::string kNoVideo = "err Core: Unable to open adv 'video_enc'";
const std::string kNoVideoOnSpi = "err CPCardInterface: ADV SPI not found!";
const std::string kNoRom = "err CPCardInterface: could not open rom file";
const std::string kInvalidRom = "err CPCardInterface: invalid ROM data";
const std::string kNoCpldLayout = "err CPCardInterface: could not find: /sys/bus/avalon/devices/cpld/layout";
const std::string kNoPhy0 = "err CPCardInterface: failed to get MDIO for phyID 0 (mdio @ (nil))";
const std::string kNoPhy1 = "err CPCardInterface: failed to get MDIO for phyID 1 (mdio @ (nil))";

std::string noScreen(const std::string& core) {
    return "err OLED: failed to open OLED SPI " + core + "!";
}

std::string noControls(const std::string& core) {
    return "err OLED: failed to get OLED regs " + core + "!";
}

const std::string kFailed = "failed";
const std::string kNoLink = "failed 0";
const std::string kNobody = "ok 0xffff";  // a management bus without an answer floats high
const std::string kNoVersions = "failed 0  0 0";

const Expectation kWithoutRom = {{kNoRom, kNoRom, kNoRom, kInvalidRom},
                                 {{"mac", kFailed}, {"card-id", kFailed}, {"rom", kFailed}}};
const Expectation kWithoutInband = {{}, {{"link-0", "ok 2"}, {"link-1", "ok 2"}, {"fibre-0", kFailed}}};
const Expectation kWithoutCpld = {{kNoCpldLayout}, {{"cpld", kFailed}}};

const Variant kOrca = {
    "orca",
    boardsim::orcaBoard,
    {
        {"fpga",
         {{kNoLayout, kNoLayout, kNoLayout, kNoTemperature, kNoLayout, kNoTemperature, kNoLayout,
           kNoTemperature, kNoLayout, noControls("subsys_hps_oled_io_spi"), kNoPhy0, kNoPhy1, kNoLayout},
          {{"sync-word", kFailed},
           {"panel", kFailed},
           {"screen", kFailed},
           {"phy-0", kFailed},
           {"phy-1", kFailed},
           {"fpga-version", kFailed},
           {"fpga", "failed of 95"},
           {"tile0", "failed of 95"},
           {"tile1", "failed of 95"}}}},
        {"core cardid", {{}, {{"fpga-version", kFailed}}}},
        {"inband", kWithoutInband},
        {"pattern", {{}, {{"pattern-lane", kFailed}}}},
        {"rom", kWithoutRom},
        {"cpld", kWithoutCpld},
        {"hwmon0/temp1", {{}, {{"hwmon0/temp1", kFailed}}}},
        {"hwmon0/temp2", {{}, {{"hwmon0/temp2", kFailed}}}},
        {"hwmon1/temp1", {{}, {{"hwmon1/temp1", kFailed}}}},
        // Then the lowest chip anywhere is taken.
        {"sensor on w1 bus 1", {{}, {{"card-serial", "ok 00000052F00D2200"}}}},
        {"core subsys_hps_central_sync", {{}, {{"sync-word", kFailed}}}},
        {"core ethernet_mdio", {{kNoPhy0, kNoPhy1}, {{"phy-0", kFailed}, {"phy-1", kFailed}}}},
        {"core subsys_hps_pio_temp_fpga", {{kNoTemperature}, {{"fpga", "failed of 95"}}}},
        {"core subsys_hps_pio_temp_tile0", {{kNoTemperature}, {{"tile0", "failed of 95"}}}},
        {"core subsys_hps_pio_temp_tile1", {{kNoTemperature}, {{"tile1", "failed of 95"}}}},
        {"core subsys_hps_oled_spi", {{noScreen("subsys_hps_oled_spi")}, {{"screen", kFailed}}}},
        {"core subsys_hps_oled_io_spi",
         {{noControls("subsys_hps_oled_io_spi")}, {{"panel", kFailed}, {"screen", kFailed}}}},
        {"panel", {{noScreen("subsys_hps_oled_spi")}, {{"screen", kFailed}}}},
        {"screen", {{noScreen("subsys_hps_oled_spi")}, {{"screen", kFailed}}}},
        {"phy 0", {{}, {{"phy-0", kNobody}}}},
        {"phy 1", {{}, {{"phy-1", kNobody}}}},
        {"mii eth0", {{}, {{"carrier-0", kFailed}, {"link-0", kNoLink}, {"config-phy-0", kFailed}}}},
        {"mii eth1", {{}, {{"carrier-1", kFailed}, {"link-1", kNoLink}}}},
        {"bus i2c-0", {{kNoVideo}, {{"sdi", "failed of 80"}, {"video", kFailed}, {"versions", kNoVersions}}}},
        {"bus fan", {{}, {{"fan", "failed of 60"}, {"oled", "failed of 50"}}}},
        {"bus syn_eth",
         {{kSyncNotFound, kSyncFailed, kEthLedNotFound, kEthLedFailed},
          {{"eth", "failed of 75"}, {"sync", kFailed}, {"psu-led", kFailed}, {"reset", kFailed}}}},
        {"bus qsfp0_0", {{kNoQsfp}, {{"qsfp0_0", kFailed}}}},
        {"bus qsfp0_1", {{kNoQsfp}, {{"qsfp0_1", kFailed}}}},
        {"bus qsfp1_0", {{kNoQsfp}, {{"qsfp1_0", kFailed}}}},
        {"bus qsfp1_1", {{kNoQsfp}, {{"qsfp1_1", kFailed}}}},
        {"chip video_enc", {{kNoVideo}, {{"video", kFailed}}}},
        {"chip sdi_temp", {{}, {{"sdi", "failed of 80"}}}},
        {"chip eeprom", {{}, {{"versions", kNoVersions}}}},
        {"chip fan_radial_temp", {{}, {{"fan", "failed of 60"}}}},
        {"chip fan_oled_temp", {{}, {{"oled", "failed of 50"}}}},
        {"chip eth_led", {{kEthLedNotFound, kEthLedFailed}, {{"psu-led", kFailed}, {"reset", kFailed}}}},
        {"chip led_sync", {{kSyncNotFound, kSyncFailed}, {{"sync", kFailed}}}},
        {"chip eth_temp", {{}, {{"eth", "failed of 75"}}}},
        {"chip 3-003e", {{kNoQsfp}, {{"qsfp0_0", kFailed}}}},
        {"chip 4-003e", {{kNoQsfp}, {{"qsfp0_1", kFailed}}}},
        {"chip 5-003e", {{kNoQsfp}, {{"qsfp1_0", kFailed}}}},
        {"chip 6-003e", {{kNoQsfp}, {{"qsfp1_1", kFailed}}}},
    },
};

const Variant kHd24 = {
    "hd24",
    boardsim::hd24Board,
    {
        {"fpga",
         {{kNoLayout, kNoLayout, kNoLayout, noControls("oled_io_spi"), kNoPhy0, kNoPhy1, kNoLayout,
           kNoVideoOnSpi},
          {{"sync-word", kFailed},
           {"panel", kFailed},
           {"screen", kFailed},
           {"phy-0", kFailed},
           {"phy-1", kFailed},
           {"fpga-version", kFailed},
           {"fpga", kFailed},
           {"misc", kFailed},
           {"video", kFailed}}}},
        {"core cardid", {{}, {{"fpga-version", kFailed}}}},
        {"inband", kWithoutInband},
        {"pattern", {{}, {{"pattern-lane", kFailed}}}},
        {"rom", kWithoutRom},
        {"cpld", kWithoutCpld},
        {"hwmon0/temp1", {{}, {{"hwmon0/temp1", kFailed}}}},
        {"sensor on w1 bus 1", {{}, {{"card-serial", kFailed}}}},
        {"core central_sync", {{}, {{"sync-word", kFailed}}}},
        {"core misc_pio", {{}, {{"fpga", kFailed}, {"misc", kFailed}}}},
        {"core ethernet_mdio", {{kNoPhy0, kNoPhy1}, {{"phy-0", kFailed}, {"phy-1", kFailed}}}},
        {"core oled_spi", {{noScreen("oled_spi")}, {{"screen", kFailed}}}},
        {"core oled_io_spi", {{noControls("oled_io_spi")}, {{"panel", kFailed}, {"screen", kFailed}}}},
        {"core spi_videosync_out", {{kNoVideoOnSpi}, {{"video", kFailed}}}},
        {"panel", {{noScreen("oled_spi")}, {{"screen", kFailed}}}},
        {"screen", {{noScreen("oled_spi")}, {{"screen", kFailed}}}},
        {"video chip", {{kNoVideoOnSpi}, {{"video", kFailed}}}},
        {"phy 0", {{}, {{"phy-0", kNobody}}}},
        {"phy 1", {{}, {{"phy-1", kNobody}}}},
        {"mii eth0", {{}, {{"carrier-0", kFailed}, {"link-0", kNoLink}, {"config-phy-0", kFailed}}}},
        {"mii eth1", {{}, {{"carrier-1", kFailed}, {"link-1", kNoLink}, {"config-phy-1", kFailed}}}},
    },
};

const WholeBoardRun& healthy(const Variant& variant) {
    static std::map<std::string, WholeBoardRun> runs;
    const auto [found, isNew] = runs.try_emplace(variant.name);
    if (isNew) {
        found->second = runWholeBoard(board().option("--board", variant.name), variant.name);
    }
    return found->second;
}

struct Case {
    const Variant* variant;
    boards::Removal removal;
};

void PrintTo(const Case& one, std::ostream* out) {
    *out << one.variant->name << " without " << one.removal.device;
}

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const Variant* variant : {&kOrca, &kHd24}) {
        for (boards::Removal& removal : boards::removals(variant->description())) {
            cases.push_back({variant, std::move(removal)});
        }
    }
    return cases;
}

class WholeBoardTest : public testing::TestWithParam<const Variant*> {};

TEST_P(WholeBoardTest, IsBuiltWithoutAWordAndEverythingAnswers) {
    const WholeBoardRun& run = healthy(*GetParam());
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_THAT(run.log, IsEmpty());
    EXPECT_THAT(run.accessors, testing::Not(IsEmpty()));
    EXPECT_THAT(run.accessors, Each(HasSubstr(" ok")));
}

INSTANTIATE_TEST_SUITE_P(Variants, WholeBoardTest, testing::Values(&kOrca, &kHd24),
                         [](const auto& variant) { return std::string(variant.param->name); });

TEST(HealthyOrca, TellsTheTemperaturesThatTheBoardsDescriptionHas) {
    const struct {
        const char* sensor;
        const char* accessor;
        int limit;
    } rows[] = {{"sdi_temp", "sdi", 80},
                {"fan_radial_temp", "fan", 60},
                {"fan_oled_temp", "oled", 50},
                {"eth_temp", "eth", 75}};
    for (const auto& [sensor, accessor, limit] : rows) {
        for (const boardsim::I2cDevice& device : boardsim::orcaBoard().i2c.devices) {
            if (device.name == sensor) {
                EXPECT_THAT(healthy(kOrca).accessors,
                            Contains(std::string(accessor) + " ok " + std::to_string(device.sixteenths / 16) +
                                     " of " + std::to_string(limit)));
            }
        }
    }
}

TEST(WholeBoardRows, NameDevicesOfTheBoards) {
    for (const Variant* variant : {&kOrca, &kHd24}) {
        std::map<std::string, Expectation> rows = variant->without;
        for (const boards::Removal& removal : boards::removals(variant->description())) {
            rows.erase(removal.device);
        }
        for (const auto& [device, expectation] : rows) {
            ADD_FAILURE() << variant->name << " has no " << device;
        }
    }
}

class BoardWithoutADevice : public testing::TestWithParam<Case> {};

TEST_P(BoardWithoutADevice, IsBuiltAndMissesThatDeviceOnly) {
    const auto& [variant, removal] = GetParam();
    const auto row = variant->without.find(removal.device);
    const Expectation expected = row != variant->without.end() ? row->second : Expectation{};

    const support::TemporaryDirectory files;
    std::ofstream(files.file("board.json")) << boardsim::writeBoard(removal.board);
    const WholeBoardRun run =
        runWholeBoard(board().option("--board", files.file("board.json")), variant->name);
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_THAT(run.log, ElementsAreArray(expected.log));
    EXPECT_THAT(run.accessors,
                ElementsAreArray(e2e::replaced(healthy(*variant).accessors, expected.answers)));
}

INSTANTIATE_TEST_SUITE_P(Devices, BoardWithoutADevice, testing::ValuesIn(allCases()), [](const auto& one) {
    return e2e::testName(std::string(one.param.variant->name) + " " + one.param.removal.device);
});

}  // namespace
