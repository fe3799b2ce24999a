#pragma once

#include <span>
#include <string>
#include <string_view>

#include "Tools/boardsim/Board/BoardDescription.h"

namespace boardsim {

/// Reads the description of a board.
/// @param name of the file, for messages.
/// @throws std::invalid_argument when it is none: "FILE:LINE: i2c.devices[3].address: what is wrong". A
/// description that is taken can be built: readBoard(writeBoard(board)) is board.
BoardDescription readBoard(std::string_view text, const std::string& name);

/// Reads a file of at most 1 MiB. @throws std::invalid_argument when it cannot be read, too.
BoardDescription readBoardFile(const std::string& path);

/// A board as text, with a line end behind it.
std::string writeBoard(const BoardDescription& board);

/// {"boards": […]}.
std::string writeBoards(std::span<const BoardDescription> boards);

}  // namespace boardsim
