#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Which of a pair of audio links carries the traffic.
namespace Enums::AlinkRedundancyMode {

enum Type : int {
    Off = 0,        ///< the links are independent
    Automatic = 1,  ///< the second takes over when the first fails
    ForceMain = 2,
    ForceBackup = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Automatic, "Automatic"},
    {ForceMain, "Force main"},
    {ForceBackup, "Force backup"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::AlinkRedundancyMode
