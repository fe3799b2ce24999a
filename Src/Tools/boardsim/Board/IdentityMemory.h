#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/MacAddress.h"

namespace boardsim {

/// What the field of the device says, by byte positions from the start of the field.
struct DeviceField {
    std::uint64_t serial = 0;               ///< 13 decimal digits; bytes 6 to 12, two digits each
    std::uint32_t suffix = 0;               ///< 20 bits behind the digits, up to byte 14
    std::array<std::uint64_t, 2> values{};  ///< bytes 24 and 32

    bool operator==(const DeviceField&) const = default;
};

/// What the field of the printed circuit board says.
struct PcbField {
    std::uint16_t minor = 0;       ///< bytes 40 and 41
    std::uint16_t major = 0;       ///< bytes 42 and 43
    std::string revision = "000";  ///< bytes 44 to 46: three characters

    bool operator==(const PcbField&) const = default;
};

/// What the board's identity memory says. What is absent has no field.
struct IdentityMemory {
    std::optional<DeviceField> device{};
    std::optional<PcbField> pcb{};
    std::vector<MacAddress> macs{};  ///< one field for all, six bytes each
    std::string sandwich{};          ///< the bytes of the sandwich board's field

    bool operator==(const IdentityMemory&) const = default;
};

/// The contents of the memory.
std::string encodeIdentity(const IdentityMemory& memory);

}  // namespace boardsim
