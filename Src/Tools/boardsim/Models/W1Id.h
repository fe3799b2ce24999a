#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace boardsim {

/// What is lasered into every 1-Wire chip: its family code and its 48-bit serial. Source: the 64-bit ROM of
/// the DS2431 data sheet; the names are those of the kernel's Documentation/w1/w1-generic.rst.
struct W1Id {
    std::uint8_t family = 0;
    std::uint64_t serial = 0;  ///< 48 bits

    /// "2d-00000a1b2c3d".
    std::string name() const;

    /// As the chip sends it: family, serial with its lowest byte first, CRC-8 over both.
    std::array<std::byte, 8> rom() const;

    /// Reads a name as the kernel does, which wants two hexadecimal digits, a dash and up to twelve more.
    /// @return nothing for anything else. What follows the number does not count.
    static std::optional<W1Id> named(std::string_view name);

    auto operator<=>(const W1Id&) const = default;
};

}  // namespace boardsim
