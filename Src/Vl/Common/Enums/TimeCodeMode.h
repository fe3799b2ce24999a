#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What happens to the time code of a channel.
namespace Enums::TimeCodeMode {

enum Type : int {
    Pass = 0,
    Insert = 1,
    Regenerate = 2,
    Remove = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Pass, "Pass"},
    {Insert, "Insert"},
    {Regenerate, "Regenerate"},
    {Remove, "Remove"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::TimeCodeMode
