#include <gmock/gmock.h>

#include "Tests/EndToEnd/Panelprobe.h"

namespace {

using e2e::onBoard;
using support::board;
using support::BoardRun;
using testing::Contains;
using testing::ElementsAreArray;

const std::string kStarted = "local1.info panelprobe: Logging: ******* Logging started *******";
const std::string kShutdown = "local1.info panelprobe: Logging: ******* Logging shutdown ******";

/// What is missing, and what the log says of it. The tool itself reports nothing and ends well.
struct Missing {
    const char* device;
    std::vector<std::string> logged;
    bool showsFrame;
};

class MissingDevice : public testing::TestWithParam<Missing> {};

TEST_P(MissingDevice, IsReadInTheLogAndTheToolEndsWell) {
    const BoardRun run = onBoard({"--print", "Hello,", "panel"}, board().without(GetParam().device));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ("", run.out);
    EXPECT_EQ(GetParam().showsFrame ? 15360U : 0U, run.frame.size());

    std::vector<std::string> expected = {kStarted};
    for (const std::string& line : GetParam().logged) {
        expected.push_back("local1.err panelprobe: " + line);
    }
    expected.push_back(kShutdown);
    EXPECT_THAT(run.log, ElementsAreArray(expected));
}

const std::string kNoLayout = "CPCardInterface: could not find: /sys/bus/avalon/devices/fpga/layout";
const std::string kNoRegisters = "OLED: failed to get OLED regs subsys_hps_oled_io_spi!";
const std::string kNoScreen = "OLED: failed to open OLED SPI subsys_hps_oled_spi!";

const std::string kNoTemperature = "Cardcontroller: pio_temp_fpga not found!";

/// The layout is asked for the sync block, two cores of every board, three temperatures and the panel.
const std::vector<std::string> kWithoutLayout = {kNoLayout,      kNoLayout, kNoLayout,      kNoLayout,
                                                 kNoTemperature, kNoLayout, kNoTemperature, kNoLayout,
                                                 kNoTemperature, kNoLayout, kNoRegisters};

INSTANTIATE_TEST_SUITE_P(Devices, MissingDevice,
                         testing::Values(Missing{"screen", {kNoScreen}, false},
                                         Missing{"spi", {kNoScreen}, false},
                                         Missing{"panel-registers", {kNoRegisters}, false},
                                         Missing{"fpga", {kNoRegisters}, false},
                                         Missing{"layout", kWithoutLayout, false},
                                         Missing{"gpio", {"CPCardInterface: could not open gpio!"}, true}),
                         [](const auto& missing) {
                             std::string name = missing.param.device;
                             std::erase(name, '-');
                             return name;
                         });

TEST(MissingLog, IsNoReasonToFail) {
    const BoardRun run = onBoard({"--print", "Hello,", "panel"}, board().without("log"));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ(15360U, run.frame.size());
}

TEST(MissingRegisters, LeaveThePollWithNothingToReport) {
    const BoardRun run = onBoard({"--waitbutton"}, board().without("panel-registers").timeout("0.5"));
    EXPECT_EQ(124, run.status);
    EXPECT_EQ("", run.out);
}

TEST(ScreenEndToEnd, ThatTakesOneByteAtATimeStillGetsTheWholeFrame) {
    const BoardRun run = onBoard({"--print", "Hello,", "panel"}, board().screen("one-byte"));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ(onBoard({"--print", "Hello,", "panel"}).frame, run.frame);
}

TEST(ScreenEndToEnd, ThatFailsOrIsFullIsNotReported) {
    for (const char* behaviour : {"failing", "full"}) {
        const BoardRun run = onBoard({"--print", "Hello,", "panel"}, board().screen(behaviour));
        EXPECT_EQ(0, run.status) << behaviour;
        EXPECT_EQ("", run.out) << behaviour;
        EXPECT_EQ("", run.frame) << behaviour;
        EXPECT_THAT(run.log, ElementsAreArray({kStarted, kShutdown})) << behaviour;
    }
}

}  // namespace
