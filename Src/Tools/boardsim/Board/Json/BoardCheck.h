#pragma once

#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/Json/JsonPlace.h"

namespace boardsim {

/// Refuses a board whose parts do not fit together: cores that are named but not there, registers beyond the
/// register space or on top of others, and what is there twice.
/// @param place where the board is described.
/// @throws JsonError that names the field.
void checkBoard(const JsonPlace& place, const BoardDescription& board);

}  // namespace boardsim
