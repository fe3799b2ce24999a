#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// When the recording of run-time measurements starts. The spelling is the one that configurations use.
namespace Enums::InstumentationStartMode {

enum Type : int {
    Off = 0,
    Manual = 1,
    AtBoot = 2,
    OnTrigger = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Manual, "Manual"},
    {AtBoot, "At boot"},
    {OnTrigger, "On trigger"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::InstumentationStartMode
