// The tool's flows on a whole board whose panel lacks its screen, its registers, or both.
#include <gmock/gmock.h>

#include "Tests/EndToEnd/Panelprobe.h"

namespace {

using e2e::onBoard;
using support::BoardRun;
using support::VirtualBoard;
using testing::ElementsAreArray;

const std::string kNoScreen = "local1.err panelprobe: OLED: failed to open OLED SPI subsys_hps_oled_spi!";
const std::string kNoRegisters =
    "local1.err panelprobe: OLED: failed to get OLED regs subsys_hps_oled_io_spi!";

constexpr int kTimedOut = 124;

/// What is missing of the panel.
struct Fault {
    const char* name;
    std::vector<const char*> missing;
    std::string logged;

    VirtualBoard board() const {
        VirtualBoard left = support::board();
        for (const char* device : missing) {
            left.without(device);
        }
        return left;
    }
};

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.name;
}

/// The log of a run that ended by itself, or else of one that was ended.
void expectLogged(const Fault& fault, const BoardRun& run) {
    std::vector<std::string> lines = {"local1.info panelprobe: Logging: ******* Logging started *******",
                                      fault.logged};
    if (run.status == 0) {
        lines.emplace_back("local1.info panelprobe: Logging: ******* Logging shutdown ******");
    }
    EXPECT_THAT(run.log, ElementsAreArray(lines));
    EXPECT_EQ("", run.frame);
    EXPECT_EQ("", run.err);
}

const Fault kBlind = {"Screen", {"screen"}, kNoScreen};
const Fault kNumb = {"Registers", {"panel-registers"}, kNoRegisters};
// Without registers the screen is not looked for, and thus not missed.
const Fault kNoPanel = {"ScreenAndRegisters", {"screen", "panel-registers"}, kNoRegisters};

class PanelWithout : public testing::TestWithParam<Fault> {};

TEST_P(PanelWithout, PrintsNowhereAndEndsWell) {
    const BoardRun run = onBoard({"--print", "Hello,", "panel"}, GetParam().board());
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("", run.out);
    expectLogged(GetParam(), run);
}

INSTANTIATE_TEST_SUITE_P(Faults, PanelWithout, testing::Values(kBlind, kNumb, kNoPanel),
                         [](const auto& fault) { return fault.param.name; });

TEST(PanelWithoutAScreen, StillNamesTheKeyThatWasOperated) {
    const BoardRun run = onBoard({"--waitbutton"}, kBlind.board().keys("left"));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("OLED left button\n", run.out);
    expectLogged(kBlind, run);
}

TEST(PanelWithoutAScreen, StillIsCheckedControlByControl) {
    const BoardRun run = onBoard({"--check"}, kBlind.board().keys("left red right red ccw cw"));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("Waiting for:\n\tPress >\n\tButton >\n", run.out);
    expectLogged(kBlind, run);
}

class PanelWithoutControls : public testing::TestWithParam<Fault> {};

TEST_P(PanelWithoutControls, IsWaitedForWithoutEnd) {
    for (const char* flow : {"--waitbutton", "--check"}) {
        const BoardRun run = onBoard({flow}, GetParam().board().timeout("0.5"));
        EXPECT_EQ(kTimedOut, run.status) << flow;
        EXPECT_EQ("", run.out) << flow;
        expectLogged(GetParam(), run);
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, PanelWithoutControls, testing::Values(kNumb, kNoPanel),
                         [](const auto& fault) { return fault.param.name; });

}  // namespace
