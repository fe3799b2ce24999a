#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How the two copies of a redundant stream are used (SMPTE ST 2022-7).
namespace Enums::IpInputMode {

enum Type : int {
    Main = 0,
    Backup = 1,
    Switching = 2,  ///< the backup when the main fails
    Seamless = 3,   ///< packet by packet from both
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Main, "Main"},
    {Backup, "Backup"},
    {Switching, "Switching"},
    {Seamless, "Seamless"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::IpInputMode
