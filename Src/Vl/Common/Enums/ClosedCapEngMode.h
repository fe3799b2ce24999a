#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What a closed-caption engine does with the captions of its channel.
namespace Enums::ClosedCapEngMode {

enum Type : int {
    Bypass = 0,
    Insert = 1,
    Replace = 2,
    Remove = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Bypass, "Bypass"},
    {Insert, "Insert"},
    {Replace, "Replace"},
    {Remove, "Remove"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::ClosedCapEngMode
