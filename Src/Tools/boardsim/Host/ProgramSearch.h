#pragma once

#include <optional>
#include <string>

namespace boardsim {

/// The file that a shell would run for `name`: `name` itself when it has a slash, else the first executable
/// file of that name in the folders of PATH. Nothing when there is none.
std::optional<std::string> findProgram(const std::string& name, const std::string& path);

/// Whether there is anything of that name to run, executable or not: what tells "permission denied" from "not
/// found" where a folder of PATH cannot be searched.
bool programExists(const std::string& name, const std::string& path);

/// The environment's PATH; empty when there is none.
std::string searchPath();

}  // namespace boardsim
