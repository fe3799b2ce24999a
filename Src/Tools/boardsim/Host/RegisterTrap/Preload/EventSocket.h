#pragma once

#include <sys/socket.h>

#include <string_view>

#include "Tools/boardsim/Host/RegisterTrap/Preload/LocalSocket.h"
#include "Tools/boardsim/Host/RegisterTrap/SpinLock.h"
#include "Tools/boardsim/Host/RegisterTrap/TrapEvent.h"

namespace boardsim {

/// The program's way to tell the virtual board: a datagram socket, connected when the first event comes and
/// again when the program has closed it.
class EventSocket {
public:
    constexpr EventSocket() = default;

    /// Sets the path of the receiver's socket, for the first event that is sent from now on.
    /// @return false when the path is empty or too long for a socket
    bool setPath(std::string_view path) noexcept { return socket_.setPath(path); }

    /// Whether there is a receiver to send to.
    bool isSet() const noexcept { return *socket_.path() != '\0'; }

    /// Fills in who it comes from and sends it; waits while the receiver is behind. When there is no receiver
    /// the event is lost, which is said once on standard error. Any thread; async-signal-safe; the caller has
    /// all signals blocked. Leaves errno alone.
    void send(TrapEvent event) noexcept;

private:
    bool trySend(const TrapEvent& event) const noexcept;
    void complain(int reason) noexcept;

    LocalSocket socket_{SOCK_DGRAM};
    bool hasComplained_ = false;
    SpinLock lock_;
};

}  // namespace boardsim
