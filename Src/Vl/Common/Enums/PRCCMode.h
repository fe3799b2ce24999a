#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Which of the colour corrector's stages are in the way.
namespace Enums::PRCCMode {

enum Type : int {
    Bypass = 0,
    Yuv = 1,
    Rgb = 2,
    YuvAndRgb = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Bypass, "Bypass"},
    {Yuv, "YUV"},
    {Rgb, "RGB"},
    {YuvAndRgb, "YUV and RGB"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::PRCCMode
