#pragma once

#include "Tools/boardsim/Host/Descriptor.h"
#include "Tools/boardsim/Host/NetlinkMessage.h"

namespace boardsim {

/// A socket that tells the kernel what to change in the network namespace in which it was opened, whoever
/// holds it later. The namespace stays as long as the socket. Blocking; not thread-safe.
class NetlinkSocket {
public:
    /// Opens one in the namespace of the calling thread.
    /// @throws std::system_error
    NetlinkSocket();

    /// Takes over one that was opened elsewhere.
    explicit NetlinkSocket(Descriptor socket) : socket_(std::move(socket)) {}

    int descriptor() const { return socket_.get(); }

    /// Sends a request and waits until it is done.
    /// @throws std::system_error that says `what`, when the kernel refuses.
    void request(NetlinkMessage message, const std::string& what);

private:
    Descriptor socket_;
};

}  // namespace boardsim
