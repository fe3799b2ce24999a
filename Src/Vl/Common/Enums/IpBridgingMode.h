#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What is bridged between the media ports and the control port.
namespace Enums::IpBridgingMode {

enum Type : int {
    Off = 0,
    Control = 1,
    All = 2,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Control, "Control"},
    {All, "All"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::IpBridgingMode
