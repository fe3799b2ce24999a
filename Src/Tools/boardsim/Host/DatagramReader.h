#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "Tools/boardsim/Host/Descriptor.h"

namespace boardsim {

/// Takes datagrams off a socket and hands each to a function. Not thread-safe.
class DatagramReader {
public:
    /// @param take gets one datagram, valid during the call; longer ones than 256 KiB are cut.
    DatagramReader(Descriptor socket, std::function<void(std::string_view)> take);

    /// For poll(): readable when a datagram waits.
    int descriptor() const { return socket_.get(); }

    /// Hands over what waits now, in order, but not more than 1024 datagrams: a sender that never pauses must
    /// not keep the caller from everything else. Does not block.
    /// @return whether more may wait.
    bool drain();

private:
    Descriptor socket_;
    std::function<void(std::string_view)> take_;
    std::vector<char> buffer_;
};

}  // namespace boardsim
