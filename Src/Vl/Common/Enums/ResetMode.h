#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How much a reset resets.
namespace Enums::ResetMode {

enum Type : int {
    None = 0,
    Software = 1,  ///< the processes only
    Reboot = 2,
    PowerCycle = 3,
    FactoryDefaults = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {Software, "Software"},
    {Reboot, "Reboot"},
    {PowerCycle, "Power cycle"},
    {FactoryDefaults, "Factory defaults"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::ResetMode
