#pragma once

#include <sys/un.h>

#include <string_view>

#include "Tools/boardsim/Host/RegisterTrap/SpinLock.h"
#include "Tools/boardsim/Host/RegisterTrap/TrapEvent.h"

namespace boardsim {

/// The program's end of the way to the virtual board: a datagram socket, connected when the first event comes
/// and again when the program has closed it. Its descriptor is 200 or higher, so that the program's own have
/// the numbers that they have without it, and is not inherited by programs that this one starts.
class EventSocket {
public:
    constexpr EventSocket() = default;

    /// Sets the path of the receiver's socket, for the first event that is sent from now on.
    /// @return false when the path is empty or too long for a socket
    bool setPath(std::string_view path) noexcept;

    /// Fills in who it comes from and sends it; waits while the receiver is behind. When there is no receiver
    /// the event is lost, which is said once on standard error. Any thread; async-signal-safe; the caller has
    /// all signals blocked. Leaves errno alone.
    void send(TrapEvent event) noexcept;

private:
    bool trySend(const TrapEvent& event) const noexcept;
    bool connect() noexcept;
    void complain(int reason) noexcept;

    sockaddr_un address_{};
    int descriptor_ = -1;
    bool hasComplained_ = false;
    SpinLock lock_;
};

}  // namespace boardsim
