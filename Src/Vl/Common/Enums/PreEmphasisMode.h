#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How strongly a line driver lifts the high frequencies.
namespace Enums::PreEmphasisMode {

enum Type : int {
    Off = 0,
    Low = 1,
    Medium = 2,
    High = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Low, "Low"},
    {Medium, "Medium"},
    {High, "High"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::PreEmphasisMode
