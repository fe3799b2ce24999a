#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The kinds of files that an update consists of.
namespace Enums::UpdatePackage {

enum Type : int {
    Unknown = 0,
    MCFirmware = 1,
    PPCFirmware = 2,
    FPGA = 3,
    Software = 4,
    VersionFile = 5,
    UpdateProcess = 6,
    FPGA_NAND = 7,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Unknown, "Unknown"},
    {MCFirmware, "MCFirmware"},
    {PPCFirmware, "PPCFirmware"},
    {FPGA, "FPGA"},
    {Software, "Software"},
    {VersionFile, "VersionFile"},
    {UpdateProcess, "UpdateProcess"},
    {FPGA_NAND, "FPGA_NAND"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::UpdatePackage
