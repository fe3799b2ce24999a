#pragma once

#include <string>
#include <string_view>

namespace processes {

/// Whether this entry of /tmp holds the programs under test; a tree may be checked out and built there.
inline bool holdsOwnBuild(std::string_view name) {
    return std::string_view(BOARDSIM).starts_with("/tmp/" + std::string(name) + "/");
}

}  // namespace processes
