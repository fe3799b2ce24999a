#pragma once

#include <string>
#include <vector>

#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/BoardPart.h"
#include "Tools/boardsim/Host/ActingFile.h"
#include "Tools/boardsim/Host/ServedTree.h"
#include "Tools/boardsim/Host/WorldPlan.h"

namespace boardsim {

/// Where a program that runs on `board` finds what.
/// @param missing what the board lacks.
/// @param font absolute path of what is shown as the panel's font; not used when the font is missing.
/// @param acting where the files are that boardsim answers for, and `trees` the directories.
/// @param reportsRegisters whether there is a socket for register accesses, too.
WorldPlan planWorld(const BoardDescription& board, const BoardParts& missing, const std::string& font,
                    const std::vector<ActingFile>& acting, const std::vector<ServedTree>& trees,
                    bool reportsRegisters);

}  // namespace boardsim
