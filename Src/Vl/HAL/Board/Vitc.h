#pragma once

#include <array>
#include <cstdint>

namespace Valen {

/// A time of day as the boards' video time code (VITC) tells it. A plain value.
struct Vitc {
    std::uint32_t seconds = 0;       ///< since midnight
    std::uint32_t milliseconds = 0;  ///< within the second
    std::uint32_t frames = 0;        ///< within the second: the same as the milliseconds, in frames
    /// The eight binary groups of the time code, two per byte, low nibble first.
    std::array<std::uint8_t, 4> userBits{};

    bool operator==(const Vitc&) const = default;
};

}  // namespace Valen
