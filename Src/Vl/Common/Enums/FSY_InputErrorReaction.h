#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What a frame synchroniser shows while its input is missing or broken.
namespace Enums::FSY_InputErrorReaction {

enum Type : int {
    Freeze = 0,  ///< the last good picture
    Black = 1,
    TestPattern = 2,
    PassThrough = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Freeze, "Freeze"},
    {Black, "Black"},
    {TestPattern, "Test pattern"},
    {PassThrough, "Pass through"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::FSY_InputErrorReaction
