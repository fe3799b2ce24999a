#pragma once

#include <linux/netlink.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace boardsim {

/// One request to the kernel's routing netlink, put together piece by piece: a fixed part and attributes,
/// which may hold attributes again. Source: netlink(7), rtnetlink(7).
class NetlinkMessage {
public:
    /// @param flags beside NLM_F_REQUEST and NLM_F_ACK, which it has in any case.
    NetlinkMessage(std::uint16_t type, std::uint16_t flags);

    /// Appends a fixed part in the kernel's layout.
    template <typename Record>
    void add(const Record& record) {
        append(std::as_bytes(std::span(&record, 1)));
    }

    void addText(std::uint16_t type, std::string_view text);
    void addNumber(std::uint16_t type, std::uint32_t value);

    /// Begins an attribute that holds all that is added until end().
    /// @return what end() wants.
    std::size_t begin(std::uint16_t type);
    void end(std::size_t begun);

    /// The whole message.
    std::span<const std::byte> bytes();

private:
    void append(std::span<const std::byte> piece);

    std::vector<std::byte> bytes_;
};

}  // namespace boardsim
