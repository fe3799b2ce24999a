#pragma once

#include <string>
#include <vector>

#include "Tools/boardsim/Host/ControlChannel.h"
#include "Tools/boardsim/Host/NetlinkSocket.h"
#include "Tools/boardsim/Host/WorldPlan.h"

namespace boardsim {

/// Gives the calling process, and its later children, a network of their own in place of the one it is in:
/// the loopback and `interfaces`, all up, without addresses and without IPv6, so that only what a program
/// sends is on the wire. At the other end of each wire is an interface of the same name in the network left
/// behind, which nobody else may use: when it is down, the board's has no carrier. Hands boardsim over `host`
/// what PeerNetwork wants.
///
/// Must be called in a network namespace of the board's own, while the process has one thread.
/// @throws std::system_error
void makeNetwork(const std::vector<NetworkInterface>& interfaces, ControlChannel& host);

/// Lets the kernel's directories of network interfaces show those of the calling process. Needs covers on
/// "/sys/class" that leave out "net", and on whatever `aside`, a free path, is below.
/// @throws std::runtime_error that names what to allow where the kernel refuses.
void showNetwork(const std::string& aside);

/// The other end of the board's wires. They last as long as it. Not thread-safe.
class PeerNetwork {
public:
    /// @param socket what makeNetwork() sent.
    explicit PeerNetwork(Descriptor socket) : socket_(std::move(socket)) {}

    /// Plugs the wire of an interface of the board in, or pulls it.
    /// @throws std::system_error when there is no such interface.
    void setCarrier(const std::string& interface, bool isThere);

private:
    NetlinkSocket socket_;
};

}  // namespace boardsim
