#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The speed of a camera with respect to the system's frame rate.
namespace Enums::GVCameraSpeed {

enum Type : int {
    Single = 0,
    Double = 1,
    Triple = 2,
    Sixfold = 3,
    Eightfold = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Single, "1x"},
    {Double, "2x"},
    {Triple, "3x"},
    {Sixfold, "6x"},
    {Eightfold, "8x"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::GVCameraSpeed
