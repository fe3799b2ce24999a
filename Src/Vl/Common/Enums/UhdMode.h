#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How an ultra-high-definition picture is carried.
namespace Enums::UhdMode {

enum Type : int {
    Off = 0,
    SquareDivision = 1,       ///< four quadrants, SMPTE ST 425-5
    TwoSampleInterleave = 2,  ///< two-sample interleave, SMPTE ST 425-5
    SingleLink = 3,           ///< one link, SMPTE ST 2082
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {SquareDivision, "Square division"},
    {TwoSampleInterleave, "2SI"},
    {SingleLink, "12G"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::UhdMode
