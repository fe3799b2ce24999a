#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Whether a port follows the transceiver that is plugged in.
namespace Enums::SFPReconfigMode {

enum Type : int {
    Off = 0,
    Automatic = 1,
    Confirm = 2,  ///< an operator agrees first
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Automatic, "Automatic"},
    {Confirm, "Confirm"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::SFPReconfigMode
