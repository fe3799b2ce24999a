#include "Tools/boardsim/Host/NetlinkSocket.h"

#include <sys/socket.h>

#include <array>
#include <cstring>

#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {
namespace {

/// What comes back for a request: a header, the error, and the beginning of the request again.
struct Acknowledgement {
    nlmsghdr header;
    nlmsgerr result;
};

/// @return an errno value, or 0.
int awaitAcknowledgement(int socket) {
    alignas(nlmsghdr) std::array<std::byte, 8192> buffer{};
    ssize_t received = -1;
    do {
        received = recv(socket, buffer.data(), buffer.size(), 0);
    } while (received < 0 && errno == EINTR);
    Acknowledgement answer{};
    if (received < static_cast<ssize_t>(sizeof answer)) {
        return received < 0 ? errno : EPROTO;
    }
    std::memcpy(&answer, buffer.data(), sizeof answer);
    return answer.header.nlmsg_type == NLMSG_ERROR ? -answer.result.error : EPROTO;
}

}  // namespace

NetlinkSocket::NetlinkSocket() : socket_(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE)) {
    if (!socket_) {
        throw systemError("cannot talk to the kernel about networks");
    }
}

void NetlinkSocket::request(NetlinkMessage message, const std::string& what) {
    const std::span<const std::byte> bytes = message.bytes();
    if (send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL) < 0) {
        throw systemError(what);
    }
    if (const int error = awaitAcknowledgement(socket_.get()); error != 0) {
        throw std::system_error(error, std::generic_category(), what);
    }
}

}  // namespace boardsim
