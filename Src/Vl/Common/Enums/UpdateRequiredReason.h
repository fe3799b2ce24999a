#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Why a part must be updated.
namespace Enums::UpdateRequiredReason {

enum Type : int {
    None = 0,
    SoftwareVersion = 1,
    FpgaVersion = 2,
    CpldVersion = 3,
    PackageIncomplete = 4,
    CardChanged = 5,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {SoftwareVersion, "Software version"},
    {FpgaVersion, "FPGA version"},
    {CpldVersion, "CPLD version"},
    {PackageIncomplete, "Package incomplete"},
    {CardChanged, "Card changed"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::UpdateRequiredReason
