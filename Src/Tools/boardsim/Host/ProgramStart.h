#pragma once

#include <csignal>
#include <string>
#include <utility>
#include <vector>

namespace boardsim {

/// How the program on the board is started. Everything else (standard streams, working directory, signal
/// dispositions, the rest of the environment) it has from boardsim's caller.
struct ProgramStart {
    std::vector<std::string> words;                                  ///< program and arguments; at least one
    std::vector<std::pair<std::string, std::string>> environment{};  ///< variables set in addition
    bool asksAboutInterfaces = false;  ///< whether boardsim answers requests of network interfaces
    sigset_t signalMask{};             ///< the mask with which boardsim was started
};

/// Becomes the program. Looks it up as a shell does. On failure prints one message and ends the process with
/// 127 when there is no such program and with 126 when it cannot be run.
[[noreturn]] void becomeProgram(const ProgramStart& start);

}  // namespace boardsim
