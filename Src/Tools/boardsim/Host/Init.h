#pragma once

#include "Tools/boardsim/Host/ControlChannel.h"
#include "Tools/boardsim/Host/ProgramStart.h"

namespace boardsim {

/// The life of process 1 of the board: starts the program, hands on signals that boardsim asks for, buries
/// orphans, and reports how the program ended. Returns when the program has ended or boardsim is gone; the
/// caller ends the process then, and the kernel ends whatever else still runs on the board.
///
/// Expects SIGCHLD to be blocked.
/// @throws std::system_error when the program's process cannot be made.
void runInit(const ProgramStart& start, ControlChannel& host);

}  // namespace boardsim
