#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What the frame's clock is locked to.
namespace Enums::GenlockMode {

enum Type : int {
    FreeRun = 0,
    BlackBurst = 1,  ///< SMPTE ST 318
    TriLevel = 2,    ///< SMPTE ST 240 and ST 274
    WordClock = 3,
    Ptp = 4,  ///< SMPTE ST 2059
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {FreeRun, "Free run"},
    {BlackBurst, "Black burst"},
    {TriLevel, "Tri-level"},
    {WordClock, "Word clock"},
    {Ptp, "PTP"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::GenlockMode
