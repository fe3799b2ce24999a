// panelprobe's flows on a board that lacks a part of its panel, or more: without a screen the controls work,
// without their registers nothing is ever operated.
#include <gmock/gmock.h>

#include <tuple>

#include "Tests/EndToEnd/Panelprobe.h"

namespace {

using e2e::onBoard;
using support::board;
using support::BoardRun;
using support::VirtualBoard;

const std::string kNoRegisters = "OLED: failed to get OLED regs subsys_hps_oled_io_spi!";
const std::string kNoScreen = "OLED: failed to open OLED SPI subsys_hps_oled_spi!";
constexpr int kTimedOut = 124;

/// What is missing, and what is logged of it.
struct Fault {
    const char* name;
    std::vector<std::string> missing;
    std::string logged;
    bool hasControls;
};

const Fault kFaults[] = {
    {"ScreenMissing", {"screen"}, kNoScreen, true},
    {"ScreensDeviceMissing", {"spi"}, kNoScreen, true},
    {"RegistersMissing", {"panel-registers"}, kNoRegisters, false},
    {"BothMissing", {"screen", "panel-registers"}, kNoRegisters, false},
};

/// One of the tool's flows, with what is operated meanwhile and what is said of that.
struct Flow {
    const char* name;
    std::vector<std::string> arguments;
    const char* keys;
    std::string said;
    bool waits;
};

const Flow kFlows[] = {
    {"Print", {"--print", "Hello,", "panel"}, "", "", false},
    {"WaitButton", {"--waitbutton"}, "left", "OLED left button\n", true},
    {"Check", {"--check"}, "cw left right red ccw cw", "Waiting for:\n\t< Press \n\t< Button\n", true},
};

class PanelFault : public testing::TestWithParam<std::tuple<Fault, Flow>> {};

TEST_P(PanelFault, IsLoggedAndTheControlsWorkWhereTheyAre) {
    const auto& [fault, flow] = GetParam();
    VirtualBoard world = board().keys(flow.keys);
    for (const std::string& part : fault.missing) {
        world.without(part);
    }
    const bool ends = fault.hasControls || !flow.waits;
    if (!ends) {
        world.timeout("3");
    }
    const BoardRun run = onBoard(flow.arguments, world);
    EXPECT_EQ(ends ? 0 : kTimedOut, run.status);
    EXPECT_EQ(ends ? flow.said : "", run.out);
    EXPECT_EQ("", run.frame);

    std::vector<std::string> expected = {"local1.info panelprobe: Logging: ******* Logging started *******",
                                         "local1.err panelprobe: " + fault.logged};
    if (ends) {
        expected.emplace_back("local1.info panelprobe: Logging: ******* Logging shutdown ******");
    }
    EXPECT_EQ(expected, run.log);
}

INSTANTIATE_TEST_SUITE_P(Flows, PanelFault,
                         testing::Combine(testing::ValuesIn(kFaults), testing::ValuesIn(kFlows)),
                         [](const auto& pair) {
                             return std::string(std::get<1>(pair.param).name) + "With" +
                                    std::get<0>(pair.param).name;
                         });

}  // namespace
