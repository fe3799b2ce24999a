#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Valen {

/// A device's place on the I2C buses. Its text is the one by which sysfs names I2C clients: the bus in
/// decimal, a hyphen, the slave's address in hexadecimal, "3-0050" for example. A plain record.
struct I2CAddress {
    static constexpr std::size_t kNameSize = 16;
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    /// No device: without a name, bus and address kNone.
    I2CAddress() = default;
    /// No device, and then parse().
    explicit I2CAddress(const char* text) { parse(text); }

    /// Reads `text`; what follows the address in it does not matter. A number without digits, or with more
    /// than 32 bits, ends the reading, as does a missing hyphen: what was not reached by then is left as it
    /// was. The name comes last.
    void parse(std::string_view text);

    /// Empty for a device that is not there; else the text, of which it holds 15 characters at most.
    char name[kNameSize] = {};
    std::uint32_t bus = kNone;
    std::uint32_t address = kNone;
};

}  // namespace Valen
