#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The medium of a trunk between two frames.
namespace Enums::TrunkType {

enum Type : int {
    None = 0,
    Copper = 1,
    Fibre = 2,
    Cwdm = 3,
    Ip = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {Copper, "Copper"},
    {Fibre, "Fibre"},
    {Cwdm, "CWDM"},
    {Ip, "IP"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::TrunkType
