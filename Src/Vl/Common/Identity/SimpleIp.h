#pragma once

#include <netinet/in.h>

#include <array>
#include <cstdint>

namespace Valen {

/// An IPv4 address: 32 bits in network byte order, as the socket interface takes them. 255.255.255.255
/// doubles as "no valid address" and is what a new SimpleIp holds. A plain value; not thread-safe.
class SimpleIp {
public:
    class CharString;

    SimpleIp() = default;
    /// Reads "a.b.c.d" as sscanf's "%hhu.%hhu.%hhu.%hhu" does: numbers above 255 wrap (256 is 0) and whatever
    /// follows the fourth number is ignored. Any other text, or null, gives 255.255.255.255.
    explicit SimpleIp(const char* text);
    static SimpleIp fromNetworkOrder(std::uint32_t address);
    /// `address` with the first octet in bits 24-31.
    static SimpleIp fromHostOrder(std::uint32_t address) { return fromNetworkOrder(htonl(address)); }

    /// False for 255.255.255.255.
    bool isValid() const { return networkOrder_ != INADDR_NONE; }
    std::uint32_t networkOrder() const { return networkOrder_; }
    /// The address as a number, the first octet in bits 24-31.
    std::uint32_t hostOrder() const { return ntohl(networkOrder_); }

    bool operator==(const SimpleIp&) const = default;

private:
    std::uint32_t networkOrder_ = INADDR_NONE;
};

/// The dotted-decimal text of an address, in a buffer of its own.
class SimpleIp::CharString {
public:
    explicit CharString(SimpleIp ip);

    const char* c_str() const { return text_.data(); }
    operator const char*() const { return c_str(); }

private:
    std::array<char, INET_ADDRSTRLEN> text_{};
};

}  // namespace Valen
