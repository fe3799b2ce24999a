#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "Tests/EndToEnd/Boardinfo.h"
#include "Tests/Support/TemporaryDirectory.h"
#include "Tests/boardsim/Support/RandomBoard.h"
#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/Json/BoardJson.h"

namespace {

using boardsim::BoardDescription;

constexpr std::uint32_t kBoards = 200;
constexpr int kAtATime = 2;

/// Lets the tool show boards, and an independent program compare that with their descriptions.
class BoardinfoComparison : public testing::Test {
protected:
    /// Leaves the descriptions, and what the tool says of these boards, for the comparison.
    void show(const std::vector<BoardDescription>& descriptions) const {
        std::atomic<std::size_t> next{0};
        std::vector<std::thread> operators;
        for (int i = 0; i < kAtATime; ++i) {
            operators.emplace_back([&] {
                for (std::size_t at = next++; at < descriptions.size(); at = next++) {
                    show(descriptions[at]);
                }
            });
        }
        for (std::thread& one : operators) {
            one.join();
        }
    }

    void expectReportsLikeDescriptions() const {
        const std::string command =
            std::string("python3 " BOARDINFO_CHECK " " BOARDINFO_SCHEMA " '") + files_.file("") + "' 2>&1";
        std::string said;
        FILE* check = popen(command.c_str(), "r");
        std::array<char, 4096> part;
        while (std::fgets(part.data(), part.size(), check) != nullptr) {
            said += part.data();
        }
        EXPECT_EQ(0, pclose(check)) << said;
    }

private:
    void show(const BoardDescription& description) const {
        const std::string kind = description.name.starts_with("hd24") ? "hd24" : "orca";
        const std::string file = write(description, "board.json", boardsim::writeBoard(description));
        const support::BoardRun run =
            e2e::showBoard({"--board", kind, "--json"}, support::board().option("--board", file));
        write(description, "report.json", run.out);
        write(description, "status", std::to_string(run.status));
        write(description, "kind", kind);
    }

    std::string write(const BoardDescription& description, const std::string& ending,
                      const std::string& text) const {
        const std::string path = files_.file(description.name + "." + ending);
        std::ofstream(path) << text;
        return path;
    }

    support::TemporaryDirectory files_;
};

TEST_F(BoardinfoComparison, OfTheBuiltInBoards) {
    const auto boards = boardsim::builtInBoards();
    show({boards.begin(), boards.end()});
    expectReportsLikeDescriptions();
}

TEST_F(BoardinfoComparison, OfTwoHundredRandomBoards) {
    std::vector<BoardDescription> all;
    for (std::uint32_t seed = 0; seed < kBoards; ++seed) {
        all.push_back(boards::randomBoard(seed));
    }
    show(all);
    expectReportsLikeDescriptions();
}

TEST_F(BoardinfoComparison, OfTheBuiltInBoardsWithEachDeviceTakenAwayInTurn) {
    std::vector<BoardDescription> all;
    for (const BoardDescription& whole : boardsim::builtInBoards()) {
        for (const boards::Removal& removal : boards::removals(whole)) {
            all.push_back(removal.board);
            all.back().name = whole.name + "-" + std::to_string(all.size());
        }
    }
    show(all);
    expectReportsLikeDescriptions();
}

}  // namespace
