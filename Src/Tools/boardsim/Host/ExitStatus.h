#pragma once

#include <sys/wait.h>

namespace boardsim {

/// The exit statuses that boardsim itself gives, beside the program's own.
enum ExitStatus : int {
    kSuccess = 0,
    kUsageError = 2,
    kTimedOut = 124,       ///< as timeout(1) does
    kBoardFailed = 125,    ///< the board could not be made or broke down
    kCannotExecute = 126,  ///< the program was found but cannot be run
    kNotFound = 127,       ///< there is no such program
};

/// What a shell makes of the status that waitpid() reports: the program's own exit status, or 128 and the
/// number of the signal that ended it.
inline int shellStatus(int waitStatus) {
    constexpr int kSignalled = 128;
    return WIFSIGNALED(waitStatus) ? kSignalled + WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

}  // namespace boardsim
