#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What has happened to an entry that observers are told about.
namespace Enums::ChangeType {

enum Type : int {
    None = 0,
    Added = 1,
    Removed = 2,
    Modified = 3,
    Moved = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {Added, "Added"},
    {Removed, "Removed"},
    {Modified, "Modified"},
    {Moved, "Moved"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::ChangeType
