#pragma once

#include <sys/types.h>

#include <cstddef>
#include <span>
#include <string>

#include "Vl/Common/Files/Descriptor.h"

namespace Valen {

/// A packet socket that is bound to one network interface: frames go out and come in as they are on the wire,
/// from the destination address on, without the check sequence. Needs CAP_NET_RAW. Nothing is logged. Each
/// operation is one system call and may be made from any thread. Source: packet(7).
class RawSocket {
public:
    /// @param interface the interface's name; longer than the kernel's 15 characters it names none.
    /// @param protocol  which frames recv() gets, by their type field; 0 is none, ETH_P_ALL every one.
    RawSocket(const char* interface, int protocol);

    /// Whether it is bound to an existing interface. Otherwise all operations fail with EBADF.
    bool isOpen() const { return socket_.isValid(); }

    /// Limits the bytes that wait in the kernel to be sent; who sends more waits. The kernel raises a small
    /// limit to its own least one. @return false on failure, with errno set.
    bool SetSendBufferSize(int bytes);

    /// Sends one whole frame. @return its size, or -1 with errno set; Ethernet refuses frames that are
    /// shorter than its header of 14 bytes (EINVAL) or longer than the interface's largest one (EMSGSIZE).
    ssize_t Send(std::span<const std::byte> frame);
    /// Sends `payload` to everybody, in a frame of this socket's protocol from the interface's address.
    /// @return the frame's size (14 bytes more), or -1 as Send() does.
    ssize_t broadcast(std::span<const std::byte> payload);
    /// Waits for a frame. What does not fit into `frame` is lost. @return the number of bytes stored, or -1
    /// with errno set.
    ssize_t recv(std::span<std::byte> frame);

private:
    Descriptor socket_;
    std::string interface_;
    int protocol_;
};

}  // namespace Valen
