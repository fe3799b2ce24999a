#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How many pictures a multiviewer output shows.
namespace Enums::MultiviewerMode {

enum Type : int {
    Off = 0,
    Single = 1,
    Quad = 2,
    Nine = 3,
    Sixteen = 4,
    UserLayout = 5,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Single, "1"},
    {Quad, "2x2"},
    {Nine, "3x3"},
    {Sixteen, "4x4"},
    {UserLayout, "User layout"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::MultiviewerMode
