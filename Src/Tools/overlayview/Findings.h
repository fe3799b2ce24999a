#pragma once

#include <string>
#include <vector>

namespace overlayview {

/// What is to be said about a file besides its facts, in sentences without a full stop.
struct Findings {
    std::vector<std::string> damage{};   ///< against the format: part of the file is lost or wrong
    std::vector<std::string> notes{};    ///< odd, but harmless
    std::vector<std::string> lacking{};  ///< what must be said on the command line for a picture
};

}  // namespace overlayview
