#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "Tools/boardsim/Board/MacAddress.h"

namespace boardsim {

/// A card's serial number and its dates, in seconds since 1970.
struct CardSerial {
    std::uint64_t number = 0;  ///< 13 digits, the last a check digit
    std::int32_t produced = 0;
    std::int32_t serviced = 0;

    bool operator==(const CardSerial&) const = default;
};

/// What the identity ROM says, from its first byte.
struct RomPart {
    std::array<std::uint8_t, 16> start{};    ///< of the boot code, which jumps over the rest
    std::array<MacAddress, 2> macs{};        ///< at 16 and 22
    std::array<std::uint32_t, 3> version{};  ///< the card ID, at 28
    CardSerial serial{};                     ///< at 40

    bool operator==(const RomPart&) const = default;
};

/// The bytes of it. Numbers have their low byte first.
std::vector<std::uint8_t> encodeRom(const RomPart& rom);

}  // namespace boardsim
