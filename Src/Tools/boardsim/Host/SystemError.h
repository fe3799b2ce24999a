#pragma once

#include <cerrno>
#include <string>
#include <system_error>

namespace boardsim {

/// An exception that says `what` and, after it, what the current errno means.
inline std::system_error systemError(const std::string& what) {
    return {errno, std::generic_category(), what};
}

}  // namespace boardsim
