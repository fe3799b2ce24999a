#include "Tools/boardsim/Host/ControlChannel.h"

#include <sys/socket.h>

#include <array>
#include <cstddef>
#include <cstring>

#include "Tools/boardsim/Host/SystemError.h"

namespace boardsim {
namespace {

constexpr std::size_t kLongestText = 4000;

struct Header {
    ControlKind kind;
    std::int32_t value;
};

using DescriptorSpace = std::array<std::byte, CMSG_SPACE(sizeof(int))>;

void attach(msghdr& message, DescriptorSpace& space, int descriptor) {
    message.msg_control = space.data();
    message.msg_controllen = space.size();
    cmsghdr* header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof descriptor);
    std::memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
}

Descriptor attached(msghdr& message) {
    const cmsghdr* header = CMSG_FIRSTHDR(&message);
    if (header == nullptr || header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS) {
        return {};
    }
    int descriptor = -1;
    std::memcpy(&descriptor, CMSG_DATA(header), sizeof descriptor);
    return Descriptor(descriptor);
}

}  // namespace

std::pair<ControlChannel, ControlChannel> ControlChannel::makePair() {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        throw systemError("cannot make a socket pair");
    }
    return {ControlChannel(ends[0]), ControlChannel(ends[1])};
}

void ControlChannel::send(ControlKind kind, std::int32_t value, std::string_view text, int descriptor) {
    Header header{kind, value};
    std::string words(text.substr(0, kLongestText));
    std::array<iovec, 2> parts{{{&header, sizeof header}, {words.data(), words.size()}}};
    msghdr message{};
    message.msg_iov = parts.data();
    message.msg_iovlen = parts.size();
    alignas(cmsghdr) DescriptorSpace space{};
    if (descriptor >= 0) {
        attach(message, space, descriptor);
    }
    while (sendmsg(socket_.get(), &message, MSG_NOSIGNAL) < 0) {
        if (errno != EINTR) {
            throw systemError("the board does not listen");
        }
    }
}

std::optional<ControlMessage> ControlChannel::receive() {
    Header header{};
    std::array<char, kLongestText> words{};
    std::array<iovec, 2> parts{{{&header, sizeof header}, {words.data(), words.size()}}};
    msghdr message{};
    message.msg_iov = parts.data();
    message.msg_iovlen = parts.size();
    alignas(cmsghdr) DescriptorSpace space{};
    message.msg_control = space.data();
    message.msg_controllen = space.size();

    ssize_t received = -1;
    do {
        received = recvmsg(socket_.get(), &message, MSG_CMSG_CLOEXEC);
    } while (received < 0 && errno == EINTR);
    if (received < static_cast<ssize_t>(sizeof header)) {
        return std::nullopt;
    }
    const std::size_t length = static_cast<std::size_t>(received) - sizeof header;
    return ControlMessage{header.kind, header.value, std::string(words.data(), length), attached(message)};
}

}  // namespace boardsim
