#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The picture rate and scan of the test-pattern generator.
namespace Enums::TestPatternFormat {

enum Type : int {
    I50 = 0,
    I5994 = 1,
    P2398 = 2,
    P24 = 3,
    P25 = 4,
    P2997 = 5,
    P30 = 6,
    P50 = 7,
    P5994 = 8,
    P60 = 9,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {I50, "50i"},
    {I5994, "59.94i"},
    {P2398, "23.98p"},
    {P24, "24p"},
    {P25, "25p"},
    {P2997, "29.97p"},
    {P30, "30p"},
    {P50, "50p"},
    {P5994, "59.94p"},
    {P60, "60p"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::TestPatternFormat
