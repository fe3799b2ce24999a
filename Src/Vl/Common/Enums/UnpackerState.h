#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How far the unpacking of an update package has come.
namespace Enums::UnpackerState {

enum Type : int {
    Idle = 0,
    Verifying = 1,
    Unpacking = 2,
    Done = 3,
    Failed = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Idle, "Idle"},
    {Verifying, "Verifying"},
    {Unpacking, "Unpacking"},
    {Done, "Done"},
    {Failed, "Failed"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::UnpackerState
