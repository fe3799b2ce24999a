#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Tools/overlayview/Request.h"

namespace overlayview {

struct Options {
    std::string file{};
    std::string pictureFile{};  ///< empty: none; "-": standard output
    bool json = false;
    Request request{};
};

/// What came out of a command line: something to do, or, when there is nothing to do, the exit status.
struct CommandLine {
    std::optional<Options> options{};
    int status = 0;
};

/// Reads the words behind the program's name. Prints help and version to standard output, and what is wrong
/// with the words to standard error. Touches no file.
CommandLine readCommandLine(std::vector<std::string> words);

/// Reads "WIDTHxHEIGHT", both 1 to 4096. Nothing for anything else.
std::optional<Size> sizeNamed(const std::string& text);

}  // namespace overlayview
