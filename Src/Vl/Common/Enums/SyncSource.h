#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Where the frame's reference comes from.
namespace Enums::SyncSource {

enum Type : int {
    Internal = 0,
    External1 = 1,
    External2 = 2,
    WordClock = 3,
    Network = 4,  ///< a neighbouring frame
    Ptp = 5,
    Input = 6,  ///< a video or MADI input
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Internal, "Internal"},
    {External1, "External 1"},
    {External2, "External 2"},
    {WordClock, "Word clock"},
    {Network, "Network"},
    {Ptp, "PTP"},
    {Input, "Input"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::SyncSource
