#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

/// `value` as an int, held at the ends of int's range. Positions and sizes are added up in 64 bits so
/// that no text and no coordinate can overflow, and come back through this.
constexpr int saturated(int64_t value) {
    return static_cast<int>(
        std::clamp<int64_t>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}
