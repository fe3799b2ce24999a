#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The LEDs of a front panel.
namespace Enums::LED {

enum Type : int {
    Power = 0,
    Status = 1,
    Sync = 2,
    Link = 3,
    Encoder = 4,
    LeftButton = 5,
    RightButton = 6,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Power, "Power"},
    {Status, "Status"},
    {Sync, "Sync"},
    {Link, "Link"},
    {Encoder, "Encoder"},
    {LeftButton, "Left button"},
    {RightButton, "Right button"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::LED
