#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Tools/boardsim/Cli/RunOptions.h"

namespace boardsim {

/// What came out of a command line: something to do, or, when there is nothing to do, the exit status.
struct CommandLine {
    std::optional<RunOptions> run{};
    std::optional<std::string> boards{};  ///< a built-in board to be printed, all when empty
    int status = 0;
};

/// Reads the words behind the program's name. Prints help and version to standard output, and what is wrong
/// with the words to standard error. Touches nothing but looks whether the font is there.
CommandLine readCommandLine(std::vector<std::string> words);

/// Reads "one-byte", "failing", "full" or "full:BYTES". Nothing for anything else.
std::optional<ScreenFault> screenFaultNamed(const std::string& name);

}  // namespace boardsim
