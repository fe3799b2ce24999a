#pragma once

#include <string>

#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/BoardPart.h"
#include "Tools/boardsim/Host/WorldPlan.h"

namespace boardsim {

/// Where a program that runs on `board` finds what. The screen is the only acting file.
/// @param missing what the board lacks.
/// @param font absolute path of what is shown as the panel's font; not used when the font is missing.
/// @param reportsRegisters whether there is a socket for register accesses, too.
WorldPlan planWorld(const BoardDescription& board, const BoardParts& missing, const std::string& font,
                    bool reportsRegisters);

}  // namespace boardsim
