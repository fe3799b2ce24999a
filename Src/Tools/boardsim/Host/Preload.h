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
/// and tell it where to report and where to ask. A program built with AddressSanitizer is told to bear with
/// the order.
/// @param reports path of the socket for reports; empty when none are wanted
/// @param answers path of the socket that answers for the registers in `ranges`; empty when none act
std::vector<std::pair<std::string, std::string>> trapEnvironment(const std::string& library,
                                                                 const std::string& reports,
                                                                 const std::string& answers = {},
                                                                 const std::string& ranges = {});

}  // namespace boardsim
