#pragma once

#include <csignal>
#include <optional>

#include "Tools/boardsim/Host/Descriptor.h"

namespace boardsim {

/// Receives the signals that someone sends to boardsim for the program's sake, as events instead of
/// interruptions: SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGUSR1 and SIGUSR2. Also blocks SIGCHLD, for the
/// processes of the board. Blocks them for the calling thread; the mask from before comes back with the
/// object's end.
class SignalWatch {
public:
    /// @throws std::system_error
    SignalWatch();
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;
    ~SignalWatch();

    const sigset_t& maskBefore() const { return before_; }

    /// For poll(): readable when a signal waits.
    int descriptor() const { return signals_.get(); }

    /// Takes one signal. @return its number if a process sent it; nothing for one that the terminal sent,
    /// because the terminal sends it to the program as well.
    std::optional<int> takeForwardable();

private:
    sigset_t before_{};
    Descriptor signals_;
};

}  // namespace boardsim
