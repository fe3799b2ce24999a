#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What has happened to a distribution profile.
namespace Enums::DistProfileEvent {

enum Type : int {
    None = 0,
    Created = 1,
    Changed = 2,
    Deleted = 3,
    Activated = 4,
    Deactivated = 5,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {Created, "Created"},
    {Changed, "Changed"},
    {Deleted, "Deleted"},
    {Activated, "Activated"},
    {Deactivated, "Deactivated"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::DistProfileEvent
