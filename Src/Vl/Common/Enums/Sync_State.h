#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The state of the frame's clock with respect to its reference.
namespace Enums::Sync_State {

enum Type : int {
    FreeRun = 0,
    Acquiring = 1,
    Locked = 2,
    Holdover = 3,  ///< the reference is lost, the last frequency kept
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {FreeRun, "Free run"},
    {Acquiring, "Acquiring"},
    {Locked, "Locked"},
    {Holdover, "Holdover"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::Sync_State
