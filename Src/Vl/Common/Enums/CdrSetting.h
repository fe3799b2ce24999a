#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How an output treats the clock of a serial digital signal (clock and data recovery).
namespace Enums::CdrSetting {

enum Type : int {
    Automatic = 0,  ///< reclock the rates that are known, bypass the others
    Bypass = 1,
    Reclock = 2,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Automatic, "Automatic"},
    {Bypass, "Bypass"},
    {Reclock, "Reclock"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::CdrSetting
