#pragma once

#include "Tools/boardinfo/Report.h"

namespace boardinfo {

class Board;

/// Asks the board everything, section by section. Blocks for the transfers that takes.
Report collect(Board& board);

}  // namespace boardinfo
