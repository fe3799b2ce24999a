#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/BoardPart.h"
#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Models/PanelScreen.h"
#include "Tools/boardsim/Operator/KeyScript.h"

namespace boardsim {

/// What `boardsim run` was asked to do. Empty texts stand for options that were not given.
struct RunOptions {
    std::vector<std::string> program;  ///< with its arguments; at least one word
    std::vector<KeyStep> keys;
    std::string frameFile;
    std::string screenshotFile;
    std::size_t scale = 1;
    bool show = false;
    std::string logFile;
    std::string traceFile;
    std::optional<std::chrono::milliseconds> timeout;
    std::string font = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";  ///< absolute
    std::string board = "orca";  ///< the name of a built-in board, or a file
    BoardParts missing;
    ScreenFault screen;
    std::vector<Fault> faults;
};

}  // namespace boardsim
