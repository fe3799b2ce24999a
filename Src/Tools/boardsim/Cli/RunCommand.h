#pragma once

#include "Tools/boardsim/Cli/RunOptions.h"

namespace boardsim {

/// Does what `boardsim run` is for: opens the output files, makes the board, runs the program on it, and
/// writes what was asked for when it has ended. Everything that goes wrong is said on standard error.
/// @return the exit status of boardsim.
int runProgramOnBoard(const RunOptions& options);

}  // namespace boardsim
