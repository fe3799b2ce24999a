#include <algorithm>

#include "Tools/boardsim/Cli/BoardsCommand.h"
#include "Tools/boardsim/Cli/CommandLine.h"
#include "Tools/boardsim/Cli/RunCommand.h"

int main(int argc, char** argv) {
    const boardsim::CommandLine commandLine =
        boardsim::readCommandLine({argv + std::min(argc, 1), argv + argc});
    if (commandLine.boards) {
        return boardsim::printBoards(*commandLine.boards);
    }
    return commandLine.run ? boardsim::runProgramOnBoard(*commandLine.run) : commandLine.status;
}
