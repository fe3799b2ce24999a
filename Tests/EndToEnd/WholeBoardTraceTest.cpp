// What building the newer board moves over the buses.
#include <gmock/gmock.h>

#include <fstream>

#include "Tests/Support/VirtualBoard.h"

namespace {

using support::BoardRun;
using testing::ElementsAreArray;

/// The lines of the list beside this test, without its remarks.
std::vector<std::string> listed() {
    std::ifstream file(CONSTRUCT_ORCA_TRACE);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.front() != '#') {
            lines.push_back(line);
        }
    }
    return lines;
}

/// The trace without its times and without reads of the files that name GPIO blocks.
std::vector<std::string> transfers(const std::vector<std::string>& trace) {
    std::vector<std::string> lines;
    for (const std::string& line : trace) {
        const std::string event = line.substr(line.find_first_not_of(' ', line.find('.')));
        const std::string text = event.substr(event.find(' ') + 1);
        if (!text.starts_with("gpio gpiochip")) {
            lines.push_back(text);
        }
    }
    return lines;
}

TEST(WholeBoardTraceTest, BuildingTheNewerBoardMakesTheListedTransfersInTheirOrder) {
    const BoardRun run = support::board().traced().run({WHOLE_BOARD, "construct"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_THAT(transfers(run.trace), ElementsAreArray(listed()));
}

}  // namespace
