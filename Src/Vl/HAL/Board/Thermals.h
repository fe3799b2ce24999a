#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace Valen {

/// Which temperature sensor of the kernel's: "/sys/class/hwmon/hwmon<hwmon>/device/temp<sensor>_input".
struct therm_entry {
    std::uint8_t hwmon : 4;
    std::uint8_t sensor : 4;
};
static_assert(sizeof(therm_entry) == 1);

/// The number that a sensor's file holds: thousandths of a degree Celsius, decimal, perhaps with blanks
/// before and anything behind it. @return nothing when it holds none.
std::optional<int> parseTemperature(std::string_view text);

}  // namespace Valen
