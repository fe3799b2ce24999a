#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The LEDs on the front of a compact frame.
namespace Enums::CompactLED {

enum Type : int {
    Power = 0,
    Status = 1,
    Alarm = 2,
    Sync = 3,
    Link = 4,
    Fan = 5,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Power, "Power"},
    {Status, "Status"},
    {Alarm, "Alarm"},
    {Sync, "Sync"},
    {Link, "Link"},
    {Fan, "Fan"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::CompactLED
