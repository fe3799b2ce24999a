#include "Tools/boardsim/Host/NetlinkMessage.h"

#include <linux/rtnetlink.h>

#include <cstring>

namespace boardsim {

NetlinkMessage::NetlinkMessage(std::uint16_t type, std::uint16_t flags) {
    nlmsghdr header{};
    header.nlmsg_type = type;
    header.nlmsg_flags = static_cast<std::uint16_t>(flags | NLM_F_REQUEST | NLM_F_ACK);
    add(header);
}

void NetlinkMessage::append(std::span<const std::byte> piece) {
    bytes_.insert(bytes_.end(), piece.begin(), piece.end());
    bytes_.resize(NLMSG_ALIGN(bytes_.size()));
}

std::size_t NetlinkMessage::begin(std::uint16_t type) {
    const std::size_t begun = bytes_.size();
    add(rtattr{0, type});
    return begun;
}

void NetlinkMessage::end(std::size_t begun) {
    const auto length = static_cast<std::uint16_t>(bytes_.size() - begun);
    std::memcpy(&bytes_[begun], &length, sizeof length);
}

void NetlinkMessage::addText(std::uint16_t type, std::string_view text) {
    // The attribute's length is without the padding behind it.
    add(rtattr{static_cast<std::uint16_t>(RTA_LENGTH(text.size() + 1)), type});
    std::vector<std::byte> terminated(text.size() + 1);
    std::memcpy(terminated.data(), text.data(), text.size());
    append(terminated);
}

void NetlinkMessage::addNumber(std::uint16_t type, std::uint32_t value) {
    add(rtattr{RTA_LENGTH(sizeof value), type});
    add(value);
}

std::span<const std::byte> NetlinkMessage::bytes() {
    const auto length = static_cast<std::uint32_t>(bytes_.size());
    std::memcpy(bytes_.data(), &length, sizeof length);
    return bytes_;
}

}  // namespace boardsim
