#include "Tools/boardsim/Cli/BoardsCommand.h"

#include <iostream>

#include "Tools/boardsim/Board/Json/BoardJson.h"
#include "Tools/boardsim/Host/ExitStatus.h"

namespace boardsim {

int printBoards(const std::string& name) {
    const BoardDescription* const board = builtInBoard(name);
    std::cout << (board == nullptr ? writeBoards(builtInBoards()) : writeBoard(*board)) << std::flush;
    if (!std::cout) {
        std::cerr << "boardsim: cannot write to standard output\n";
        return kUsageError;
    }
    return kSuccess;
}

}  // namespace boardsim
