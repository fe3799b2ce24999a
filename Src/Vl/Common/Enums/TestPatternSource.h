#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What the test-pattern generator shows.
namespace Enums::TestPatternSource {

enum Type : int {
    Off = 0,
    Black = 1,
    White = 2,
    ColourBars75 = 3,
    ColourBars100 = 4,
    SmpteBars = 5,  ///< RP 219
    Ramp = 6,
    Grid = 7,
    Pathological = 8,  ///< RP 198: stresses equaliser and PLL
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Black, "Black"},
    {White, "White"},
    {ColourBars75, "Colour bars 75%"},
    {ColourBars100, "Colour bars 100%"},
    {SmpteBars, "SMPTE bars"},
    {Ramp, "Ramp"},
    {Grid, "Grid"},
    {Pathological, "Pathological"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::TestPatternSource
