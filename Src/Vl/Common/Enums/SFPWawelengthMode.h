#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The grid on which a transceiver's laser works. The spelling is the one that configurations use.
namespace Enums::SFPWawelengthMode {

enum Type : int {
    Fixed = 0,
    Cwdm = 1,  ///< ITU-T G.694.2
    Dwdm = 2,  ///< ITU-T G.694.1
    Tunable = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Fixed, "Fixed"},
    {Cwdm, "CWDM"},
    {Dwdm, "DWDM"},
    {Tunable, "Tunable"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::SFPWawelengthMode
