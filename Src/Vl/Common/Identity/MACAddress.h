#pragma once

#include <array>
#include <cstddef>

namespace Valen {

/// An Ethernet address: six bytes in transmission order. All zeros stands for "none". A plain value of six
/// bytes, as EEPROM records hold it; not thread-safe.
class MACAddress {
public:
    static constexpr std::size_t kSize = 6;
    using Bytes = std::array<unsigned char, kSize>;
    class CharString;

    constexpr MACAddress() = default;
    constexpr explicit MACAddress(const Bytes& bytes) : bytes_(bytes) {}
    /// As fromString; all zeros when `text` is no address.
    explicit MACAddress(const char* text);

    /// Reads "02:00:5e:01:02:03" (hexadecimal numbers of any length, of which the low eight bits count, and
    /// nothing behind) or else "02005E010203" as sscanf's "%02X%02X%02X%02X%02X%02X" does (whatever follows
    /// is ignored; a dash is a sign, so dashes as separators give another address). @return false for
    /// anything else, and for null; all bytes are then 0.
    bool fromString(const char* text);

    /// The hardware address of a network interface, as the kernel knows it (SIOCGIFHWADDR, netdevice(7)); all
    /// zeros when it knows none. Blocks for one request.
    static MACAddress fromInterface(const char* ifname);

    const Bytes& bytes() const { return bytes_; }
    Bytes& bytes() { return bytes_; }
    /// For printf: mac.toString().c_str(). Without a separator when that is 0 or negative.
    CharString toString(int separator = ':') const;

    bool operator==(const MACAddress&) const = default;

private:
    Bytes bytes_{};
};

static_assert(sizeof(MACAddress) == 6);

/// The text of an address in a buffer of its own: "02:00:5E:01:02:03", upper case.
class MACAddress::CharString {
public:
    /// `bytes` are six. `separator` stands between them when it is greater than 0; otherwise nothing does.
    CharString(const unsigned char* bytes, int separator);

    const char* c_str() const { return text_.data(); }
    operator const char*() const { return c_str(); }

private:
    /// Two digits and a separator, resp. the terminator, for each byte.
    std::array<char, 3 * kSize> text_{};
};

}  // namespace Valen
