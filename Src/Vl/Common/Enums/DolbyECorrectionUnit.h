#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The unit of a manual Dolby E alignment.
namespace Enums::DolbyECorrectionUnit {

enum Type : int {
    Lines = 0,    ///< video lines
    Samples = 1,  ///< audio samples at 48 kHz
    Microseconds = 2,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Lines, "Lines"},
    {Samples, "Samples"},
    {Microseconds, "Microseconds"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::DolbyECorrectionUnit
