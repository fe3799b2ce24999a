#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Where a multiviewer tile shows its caption.
namespace Enums::CaptionDisplayPosition {

enum Type : int {
    Hidden = 0,
    Top = 1,
    Bottom = 2,
    Below = 3,  ///< under the picture, covering nothing of it
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Hidden, "Hidden"},
    {Top, "Top"},
    {Bottom, "Bottom"},
    {Below, "Below"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::CaptionDisplayPosition
