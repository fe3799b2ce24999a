#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How the guard band of a Dolby E stream is brought to its place in the video frame.
namespace Enums::DolbyECorrectionSetting {

enum Type : int {
    Off = 0,
    Automatic = 1,
    Manual = 2,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Automatic, "Automatic"},
    {Manual, "Manual"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::DolbyECorrectionSetting
