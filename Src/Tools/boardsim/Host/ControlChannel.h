#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Tools/boardsim/Host/Descriptor.h"

namespace boardsim {

/// What the two sides of a board tell each other.
enum class ControlKind : std::int32_t {
    FuseDevice,      ///< world → host: the descriptor that serves the acting files
    LogSocket,       ///< world → host: the socket behind "/dev/log"
    TrapSocket,      ///< world → host: the socket that register accesses are reported to
    RegisterSocket,  ///< world → host: the listening socket that answers for registers that act
    SocketRequests,  ///< world → host: what requests of network interfaces are answered on
    RegisterMemory,  ///< world → host: the memory behind the mapped device
    PeerNetwork,     ///< world → host: the socket that plugs and pulls the wires of the board's network
    Failed,          ///< world → host: the board could not be made; `text` says why
    Ended,           ///< world → host: the program ended; `value` is what waitpid() reported
    Signal,          ///< host → world: send the program signal number `value`
};

struct ControlMessage {
    ControlKind kind;
    std::int32_t value = 0;
    std::string text{};
    Descriptor descriptor{};
};

/// One end of the connection between boardsim and the processes inside the board: whole messages, in order,
/// each with at most one descriptor. Blocking. Not thread-safe.
class ControlChannel {
public:
    /// Makes both ends, close-on-exec.
    /// @throws std::system_error
    static std::pair<ControlChannel, ControlChannel> makePair();

    /// Sends one message; `descriptor` stays the caller's. Texts are cut after 4000 bytes.
    /// @throws std::system_error when the other side is gone.
    void send(ControlKind kind, std::int32_t value = 0, std::string_view text = {}, int descriptor = -1);

    /// Waits for a message. Nothing when the other side is gone.
    std::optional<ControlMessage> receive();

    /// For poll(): readable when receive() will not block.
    int descriptor() const { return socket_.get(); }

    void close() { socket_.reset(); }

private:
    explicit ControlChannel(int socket) : socket_(socket) {}

    Descriptor socket_;
};

}  // namespace boardsim
