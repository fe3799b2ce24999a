#include "Tools/boardsim/Board/BoardWorld.h"

#include <gmock/gmock.h>

#include <set>

#include "Tests/boardsim/Support/RandomBoard.h"
#include "Tools/boardsim/Board/BoardModels.h"

namespace {

using boardsim::BoardDescription;
using boardsim::BoardModels;
using boardsim::BoardPart;
using boardsim::BoardParts;
using boardsim::WorldPlan;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;

WorldPlan planOf(const BoardDescription& board, const BoardParts& missing = {}) {
    const BoardModels models(board, missing, {}, {});
    return boardsim::planWorld(board, missing, "/font.ttf", models.files(), models.trees(), false);
}

/// Nothing may be planned twice, or on top of something else.
void expectEachPathOnce(const WorldPlan& plan, const std::string& board) {
    std::multiset<std::string> paths(plan.acting.begin(), plan.acting.end());
    paths.insert(plan.trees.begin(), plan.trees.end());
    for (const boardsim::PlainFile& file : plan.files) {
        paths.insert(file.path);
    }
    for (const boardsim::SymbolicLink& link : plan.links) {
        paths.insert(link.path);
    }
    for (const std::string& path : paths) {
        EXPECT_EQ(1U, paths.count(path)) << path << " of " << board;
    }
}

TEST(BoardWorldTest, ABareBoardHasNoDevices) {
    BoardDescription bare;
    bare.name = "bare";
    const WorldPlan plan = planOf(bare);
    EXPECT_THAT(plan.acting, IsEmpty());
    EXPECT_THAT(plan.trees, IsEmpty());
    EXPECT_EQ("", plan.registers.path);
    EXPECT_FALSE(plan.needsFuse) << "there is no screen";
}

TEST(BoardWorldTest, EveryBoardCanBeBuilt) {
    for (std::uint32_t seed = 0; seed < 100; ++seed) {
        const BoardDescription board = boards::randomBoard(seed);
        expectEachPathOnce(planOf(board), board.name);
    }
    for (const BoardDescription& whole : boardsim::builtInBoards()) {
        expectEachPathOnce(planOf(whole), whole.name);
        for (const boards::Removal& removal : boards::removals(whole)) {
            expectEachPathOnce(planOf(removal.board), removal.device);
        }
    }
}

TEST(BoardWorldTest, WhatIsLeftOutIsNotPlanned) {
    const auto without = [](BoardPart part) {
        BoardParts missing;
        missing.add(part);
        return planOf(boardsim::orcaBoard(), missing);
    };
    EXPECT_THAT(planOf(boardsim::orcaBoard()).acting, Contains("/dev/bootrom"));
    EXPECT_THAT(without(BoardPart::Rom).acting, Not(Contains("/dev/bootrom")));
    EXPECT_THAT(planOf(boardsim::orcaBoard()).trees, Contains("/sys/class/hwmon"));
    EXPECT_THAT(without(BoardPart::Hwmon).trees, Not(Contains("/sys/class/hwmon")));
    const std::string memory = "/sys/bus/i2c/devices/0-0050/eeprom";
    EXPECT_THAT(planOf(boardsim::orcaBoard()).acting, Contains(memory));
    EXPECT_THAT(without(BoardPart::Eeprom).acting, Not(Contains(memory)));
    EXPECT_THAT(without(BoardPart::Eeprom).acting, Contains("/dev/i2c-0"));
}

}  // namespace
