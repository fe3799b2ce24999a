// A description of a board of any content: either it is refused with a message, or a board is built from it,
// and what is written of the board is read as the same.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Fuzz/Require.h"
#include "Tools/boardsim/Board/BoardModels.h"
#include "Tools/boardsim/Board/BoardWorld.h"
#include "Tools/boardsim/Board/Json/BoardJson.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    boardsim::BoardDescription board;
    try {
        board = boardsim::readBoard({reinterpret_cast<const char*>(data), size}, "board.json");
    } catch (const std::invalid_argument& refusal) {
        require(std::string_view(refusal.what()).starts_with("board.json:"));
        return 0;
    }
    require(boardsim::readBoard(boardsim::writeBoard(board), "written") == board);
    const boardsim::BoardModels models(board, {}, {}, {});
    const boardsim::WorldPlan plan =
        boardsim::planWorld(board, {}, "/font.ttf", models.files(), models.trees(), true);
    require(!plan.directories.empty());
    return 0;
}
