#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The state of a frame (the chassis) as its neighbours see it.
namespace Enums::FrameState {

enum Type : int {
    Offline = 0,
    Booting = 1,
    Active = 2,
    Updating = 3,
    Failed = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Offline, "Offline"},
    {Booting, "Booting"},
    {Active, "Active"},
    {Updating, "Updating"},
    {Failed, "Failed"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::FrameState
