#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace boardsim {

/// Where the library is that reports register accesses: beside this program's folder, as it is built and
/// installed. Nothing when it is in none of those places.
std::optional<std::string> findTrapLibrary();

/// Whether `program` is loaded without the dynamic linker, which then preloads nothing. A script counts as
/// its interpreter. A file that is neither ELF nor script, or cannot be read, is not static.
bool isStaticallyLinked(const std::string& program);

/// The environment variables that preload the library into a program, in front of what is preloaded anyway,
/// and tell it where to report. A program built with AddressSanitizer is told to bear with the order.
std::vector<std::pair<std::string, std::string>> trapEnvironment(const std::string& library,
                                                                 const std::string& socket);

}  // namespace boardsim
