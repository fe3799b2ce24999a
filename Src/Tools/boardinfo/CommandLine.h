#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Tools/boardinfo/Options.h"

namespace boardinfo {

/// What came out of a command line: something to do, or, when there is nothing to do, the exit status.
struct CommandLine {
    std::optional<Options> options{};
    int status = 0;
};

/// Reads the words behind the program's name. Prints help and version to standard output, and what is wrong
/// with the words to standard error. Touches no file.
CommandLine readCommandLine(std::vector<std::string> words);

/// Reads a time in seconds, "0.5", from 0.1 to 86400, to the millisecond. Nothing for anything else.
std::optional<std::chrono::milliseconds> secondsNamed(const std::string& text);

}  // namespace boardinfo
