#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The parts of a frame that are updated one by one.
namespace Enums::UpdateComponent {

enum Type : int {
    None = 0,
    BootLoader = 1,
    Kernel = 2,
    FileSystem = 3,
    Software = 4,
    Fpga = 5,
    Cpld = 6,
    McFirmware = 7,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {BootLoader, "Boot loader"},
    {Kernel, "Kernel"},
    {FileSystem, "File system"},
    {Software, "Software"},
    {Fpga, "FPGA"},
    {Cpld, "CPLD"},
    {McFirmware, "MC firmware"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::UpdateComponent
