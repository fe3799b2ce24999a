#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The active picture of the test-pattern generator, width by height.
namespace Enums::TestPatternResolution {

enum Type : int {
    R720x486 = 0,    ///< SMPTE ST 125
    R720x576 = 1,    ///< ITU-R BT.601
    R1280x720 = 2,   ///< SMPTE ST 296
    R1920x1080 = 3,  ///< SMPTE ST 274
    R2048x1080 = 4,  ///< SMPTE ST 2048-1
    R3840x2160 = 5,  ///< SMPTE ST 2036-1
    R4096x2160 = 6,  ///< SMPTE ST 2048-1
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {R720x486, "720x486"},
    {R720x576, "720x576"},
    {R1280x720, "1280x720"},
    {R1920x1080, "1920x1080"},
    {R2048x1080, "2048x1080"},
    {R3840x2160, "3840x2160"},
    {R4096x2160, "4096x2160"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::TestPatternResolution
