#pragma once

#include <string>

namespace boardsim {

/// Prints the built-in board of this name, or all when the name is empty, as JSON to standard output.
/// @return the exit status of boardsim.
int printBoards(const std::string& name);

}  // namespace boardsim
