#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How TSL UMD displays are mapped to multiviewer tiles.
namespace Enums::TslMappingMode {

enum Type : int {
    Off = 0,
    ByIndex = 1,  ///< the display address is the tile's number
    ByName = 2,
    Table = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {ByIndex, "By index"},
    {ByName, "By name"},
    {Table, "Table"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::TslMappingMode
