#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Where a time code is taken from.
namespace Enums::TimeCodeSource {

enum Type : int {
    None = 0,
    Ltc = 1,      ///< linear, SMPTE ST 12-1
    Vitc = 2,     ///< vertical interval, SMPTE ST 12-1
    AtcLtc = 3,   ///< ancillary, SMPTE ST 12-2
    AtcVitc = 4,  ///< ancillary, SMPTE ST 12-2
    SystemTime = 5,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {Ltc, "LTC"},
    {Vitc, "VITC"},
    {AtcLtc, "ATC LTC"},
    {AtcVitc, "ATC VITC"},
    {SystemTime, "System time"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::TimeCodeSource
