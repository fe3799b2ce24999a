#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The colour space in which the colour corrector works.
namespace Enums::PRCCColorSpace {

enum Type : int {
    Automatic = 0,  ///< by the video format
    Bt601 = 1,
    Bt709 = 2,
    Bt2020 = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Automatic, "Automatic"},
    {Bt601, "BT.601"},
    {Bt709, "BT.709"},
    {Bt2020, "BT.2020"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::PRCCColorSpace
