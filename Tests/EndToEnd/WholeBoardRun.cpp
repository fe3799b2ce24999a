#include "Tests/EndToEnd/WholeBoardRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <sstream>

namespace e2e {
namespace {

std::string firstWord(const std::string& line) {
    return line.substr(0, line.find(' '));
}

}  // namespace

WholeBoardRun runWholeBoard(const support::VirtualBoard& board, const std::string& variant) {
    support::VirtualBoard timed = board;
    const support::BoardRun run = timed.timeout("20").run({WHOLE_BOARD, variant});
    WholeBoardRun seen{run.status, {}, {}, run.err};
    std::istringstream out(run.out);
    for (std::string line; std::getline(out, line);) {
        seen.accessors.push_back(line);
    }
    const std::string program = " whole_board: ";
    const std::string userLog = "local1.";
    for (std::string line : run.log) {
        const std::size_t name = line.find(program);
        if (name == std::string::npos) {
            ADD_FAILURE() << "an unexpected line: " << line;
        } else if (line.find(": *******") == std::string::npos) {
            line.replace(name, program.size(), " ");
            seen.log.push_back(line.starts_with(userLog) ? line.substr(userLog.size()) : line);
        }
    }
    return seen;
}

std::vector<std::string> replaced(std::vector<std::string> accessors, const Answers& answers) {
    for (const auto& [accessor, answer] : answers) {
        const auto found = std::find_if(accessors.begin(), accessors.end(),
                                        [&](const std::string& line) { return firstWord(line) == accessor; });
        if (found == accessors.end()) {
            ADD_FAILURE() << "no accessor " << accessor;
        } else {
            *found = accessor + " " + answer;
        }
    }
    return accessors;
}

std::string testName(const std::string& device) {
    std::string name = device;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

}  // namespace e2e
