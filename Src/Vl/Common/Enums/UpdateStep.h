#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How far an update has come.
namespace Enums::UpdateStep {

enum Type : int {
    Idle = 0,
    Prepare = 1,
    Transfer = 2,
    Verify = 3,
    Erase = 4,
    Write = 5,
    Activate = 6,
    Reboot = 7,
    Done = 8,
    Failed = 9,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Idle, "Idle"},
    {Prepare, "Prepare"},
    {Transfer, "Transfer"},
    {Verify, "Verify"},
    {Erase, "Erase"},
    {Write, "Write"},
    {Activate, "Activate"},
    {Reboot, "Reboot"},
    {Done, "Done"},
    {Failed, "Failed"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::UpdateStep
