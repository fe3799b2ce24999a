#pragma once

#include <string>
#include <vector>

namespace overlays {

/// What the program left behind.
struct ProgramRun {
    int status = -1;  ///< as a shell sees it
    std::string out;
    std::string err;
};

/// Runs the real program with these words; its standard output and error go to files in `directory`.
ProgramRun runOverlayview(const std::string& directory, const std::vector<std::string>& words);

}  // namespace overlays
