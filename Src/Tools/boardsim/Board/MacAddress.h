#pragma once

#include <array>
#include <cstdint>

namespace boardsim {

/// Six bytes in the order of transmission.
using MacAddress = std::array<std::uint8_t, 6>;

}  // namespace boardsim
