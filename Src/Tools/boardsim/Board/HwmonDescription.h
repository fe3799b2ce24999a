#pragma once

#include <cstdint>

namespace boardsim {

/// A temperature that the kernel's hardware monitoring shows.
struct HwmonSensor {
    unsigned device = 0;  ///< "hwmon0"
    unsigned sensor = 0;  ///< "temp1_input"
    std::int32_t millidegrees = 0;

    bool operator==(const HwmonSensor&) const = default;
};

}  // namespace boardsim
