#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Tests/Support/VirtualBoard.h"

namespace e2e {

/// The unmodified tool that is driven.
inline const std::string kBoardinfo = BOARDINFO;

inline support::BoardRun showBoard(const std::vector<std::string>& arguments,
                                   const support::VirtualBoard& board = support::board()) {
    std::vector<std::string> command = {kBoardinfo};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return board.run(command);
}

/// What the tool says as JSON, and its exit status.
struct Shown {
    int status = -1;
    nlohmann::json report{};
};

inline Shown shownAsJson(const support::VirtualBoard& board = support::board(),
                         std::vector<std::string> arguments = {}) {
    arguments.emplace_back("--json");
    const support::BoardRun run = showBoard(arguments, board);
    nlohmann::json report = nlohmann::json::parse(run.out, nullptr, false);
    EXPECT_FALSE(report.is_discarded()) << run.out << run.err;
    return {run.status, std::move(report)};
}

/// The rows with a state, by their section and name: "temperatures.fan".
inline std::vector<std::string> rowsThatAre(const std::string& state, const nlohmann::json& report) {
    std::vector<std::string> names;
    for (const auto& [sectionName, section] : report.items()) {
        if (!section.is_structured()) {
            continue;
        }
        for (const auto& [key, row] : section.items()) {
            if (row["state"] == state) {
                names.push_back(sectionName + "." +
                                (section.is_array() ? row["name"].get<std::string>() : key));
            }
        }
    }
    return names;
}

}  // namespace e2e
