// panelprobe in places that are hard on a program: it does there what it does everywhere.
#include "Tests/EndToEnd/HostilePlaces.h"

#include <gmock/gmock.h>

#include <tuple>

#include "Tests/EndToEnd/Panelprobe.h"

namespace {

using support::board;
using support::BoardRun;
using support::VirtualBoard;
using testing::ElementsAre;

/// One of the tool's flows, with what is operated meanwhile.
struct Flow {
    const char* name;
    std::vector<std::string> arguments;
    const char* keys;
    bool prints;
};
std::ostream& operator<<(std::ostream& out, const Flow& flow) {
    return out << flow.name;
}

const Flow kPrint = {"Print", {"--print", "Hello,", "panel"}, "", false};
const Flow kWaitButton = {"WaitButton", {"--waitbutton"}, "left", true};
const Flow kCheck = {"Check", {"--check"}, "cw left right red ccw cw", true};

std::vector<std::string> commandOf(const Flow& flow) {
    std::vector<std::string> command = {e2e::kPanelprobe};
    command.insert(command.end(), flow.arguments.begin(), flow.arguments.end());
    return command;
}

VirtualBoard boardOf(const Flow& flow) {
    return board().keys(flow.keys);
}

class PanelprobeInAHostilePlace : public testing::TestWithParam<std::tuple<e2e::Place, Flow>> {};

TEST_P(PanelprobeInAHostilePlace, DoesWhatItDoesEverywhere) {
    const auto& [place, flow] = GetParam();
    const BoardRun everywhere = boardOf(flow).run(commandOf(flow));
    EXPECT_EQ(0, everywhere.status);
    EXPECT_EQ(flow.prints, !everywhere.out.empty());

    const BoardRun here = boardOf(flow).run(e2e::at(place, commandOf(flow)));
    EXPECT_EQ(0, here.status);
    EXPECT_EQ(place.hasOutput ? everywhere.out : "", here.out);
    EXPECT_EQ("", here.err);
    EXPECT_EQ(everywhere.frame, here.frame);
    EXPECT_EQ(everywhere.log, here.log);
}

INSTANTIATE_TEST_SUITE_P(Places, PanelprobeInAHostilePlace,
                         testing::Combine(testing::ValuesIn(e2e::kHostilePlaces),
                                          testing::Values(kPrint, kWaitButton, kCheck)),
                         [](const auto& pair) {
                             return std::string(std::get<1>(pair.param).name) + "With" +
                                    std::get<0>(pair.param).name;
                         });

TEST(PanelprobeWithoutAReader, EndsWhereItPrints) {
    for (const Flow& flow : {kWaitButton, kCheck}) {
        const BoardRun run = boardOf(flow).run(e2e::at(e2e::kReaderGone, commandOf(flow)));
        EXPECT_EQ(128 + 13, run.status) << flow.name;  // SIGPIPE
        EXPECT_THAT(run.log, ElementsAre("local1.info panelprobe: Logging: ******* Logging started *******"));
    }
}

TEST(PanelprobeWithoutAReader, ShowsWhatItIsTold) {
    const BoardRun run = boardOf(kPrint).run(e2e::at(e2e::kReaderGone, commandOf(kPrint)));
    EXPECT_EQ(0, run.status);
    EXPECT_EQ(boardOf(kPrint).run(commandOf(kPrint)).frame, run.frame);
}

class PanelprobeOfAUser : public testing::TestWithParam<Flow> {};

TEST_P(PanelprobeOfAUser, DoesWhatItDoesForEverybody) {
    const BoardRun roots = boardOf(GetParam()).run(commandOf(GetParam()));
    const BoardRun users = boardOf(GetParam()).asUser().run(commandOf(GetParam()));
    EXPECT_EQ(0, users.status);
    EXPECT_EQ(roots.out, users.out);
    EXPECT_EQ("", users.err);
    EXPECT_EQ(15360U, users.frame.size());
    EXPECT_EQ(roots.frame, users.frame);
    EXPECT_EQ(roots.log, users.log);
}

INSTANTIATE_TEST_SUITE_P(Flows, PanelprobeOfAUser, testing::Values(kPrint, kWaitButton, kCheck),
                         [](const auto& flow) { return flow.param.name; });

}  // namespace
