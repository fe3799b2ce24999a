#pragma once

#include <map>
#include <string>
#include <vector>

#include "Tests/Support/VirtualBoard.h"

namespace e2e {

/// What tests see of a run of the program whole_board: what its accessors answered and what it logged.
struct WholeBoardRun {
    int status = -1;
    std::vector<std::string> accessors;  ///< "fan ok 29 of 60", in the program's order
    std::vector<std::string> log;  ///< above debugging, without the lines of start and end: "err Core: …"
    std::string err;
};

/// Runs the program on a board. @param variant "orca" or "hd24", the class that it builds.
WholeBoardRun runWholeBoard(const support::VirtualBoard& board, const std::string& variant);

/// Answers that differ from those of the healthy board, by accessor: {"fan", "failed of 60"}.
using Answers = std::map<std::string, std::string>;

/// What is to be seen of a board with one thing wrong.
struct Expectation {
    std::vector<std::string> log;
    Answers answers;
};

/// The healthy board's accessors with `answers` in the place of their own.
std::vector<std::string> replaced(std::vector<std::string> accessors, const Answers& answers);

/// The name of a test for a device: letters, digits and underscores only.
std::string testName(const std::string& device);

}  // namespace e2e
