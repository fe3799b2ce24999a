#pragma once

#include <sys/socket.h>
#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string_view>

#include "Tools/boardsim/Host/RegisterTrap/Preload/LocalSocket.h"
#include "Tools/boardsim/Host/RegisterTrap/TrapEvent.h"

namespace boardsim {

/// The program's way to ask the virtual board: a connection of its own for each process, made when the first
/// request comes, again after a fork and again when the program has closed it.
/// Async-signal-safe; not thread-safe: the register trap's lock is held around every request.
class RequestSocket {
public:
    constexpr RequestSocket() = default;

    /// Sets the path of the answering socket. @return false when it is empty or too long for a socket
    bool setPath(std::string_view path) noexcept { return socket_.setPath(path); }

    /// Fills in who asks, sends the request and waits for the answer. The caller has all signals blocked.
    /// Leaves errno alone.
    /// @return nothing when nobody answers (any longer), which is said once on standard error
    std::optional<std::uint64_t> ask(TrapEvent request) noexcept;

private:
    bool isOurs() const noexcept;
    bool connect() noexcept;
    std::optional<std::uint64_t> exchange(const TrapEvent& request) const noexcept;
    void complain(int reason) noexcept;

    LocalSocket socket_{SOCK_SEQPACKET};
    pid_t owner_ = 0;  ///< the process that made the connection
    dev_t device_ = 0;
    ino_t inode_ = 0;
    bool hasComplained_ = false;
};

}  // namespace boardsim
