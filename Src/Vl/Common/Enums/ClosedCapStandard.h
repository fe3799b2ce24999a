#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The standard of a channel's captions or subtitles.
namespace Enums::ClosedCapStandard {

enum Type : int {
    None = 0,
    Cea608 = 1,  ///< line 21
    Cea708 = 2,  ///< caption distribution packets, SMPTE ST 334
    Op47 = 3,    ///< teletext subtitles in ancillary data
    Wst = 4,     ///< teletext subtitles in vertical blanking
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {Cea608, "CEA-608"},
    {Cea708, "CEA-708"},
    {Op47, "OP-47"},
    {Wst, "WST"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::ClosedCapStandard
