#include "Vl/HAL/Board/RawSocket.h"

#include <linux/if_packet.h>
#include <net/ethernet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "Vl/Common/Identity/MACAddress.h"

namespace Valen {
namespace {

std::uint16_t networkOrder(int protocol) {
    return htons(static_cast<std::uint16_t>(protocol));
}

/// Without a protocol: until it is bound it would get the frames of all interfaces.
Descriptor openBound(const char* interface, int protocol) {
    Descriptor socket(::socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0));
    sockaddr_ll address{};
    address.sll_family = AF_PACKET;
    address.sll_protocol = networkOrder(protocol);
    address.sll_ifindex = static_cast<int>(if_nametoindex(interface));
    if (address.sll_ifindex == 0 ||  // which would mean every interface
        bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        return {};
    }
    return socket;
}

}  // namespace

RawSocket::RawSocket(const char* interface, int protocol)
    : socket_(openBound(interface, protocol)), interface_(interface), protocol_(protocol) {}

bool RawSocket::SetSendBufferSize(int bytes) {
    return setsockopt(socket_.get(), SOL_SOCKET, SO_SNDBUF, &bytes, sizeof bytes) == 0;
}

ssize_t RawSocket::Send(std::span<const std::byte> frame) {
    return send(socket_.get(), frame.data(), frame.size(), 0);
}

ssize_t RawSocket::broadcast(std::span<const std::byte> payload) {
    ether_header header{};
    std::memset(header.ether_dhost, 0xFF, sizeof header.ether_dhost);
    const MACAddress own = MACAddress::fromInterface(interface_.c_str());
    std::memcpy(header.ether_shost, own.bytes().data(), sizeof header.ether_shost);
    header.ether_type = networkOrder(protocol_);
    std::vector<std::byte> frame(sizeof header + payload.size());
    std::memcpy(frame.data(), &header, sizeof header);
    std::copy(payload.begin(), payload.end(), frame.begin() + sizeof header);  // there may be none
    return Send(frame);
}

ssize_t RawSocket::recv(std::span<std::byte> frame) {
    return ::recv(socket_.get(), frame.data(), frame.size(), 0);
}

}  // namespace Valen
