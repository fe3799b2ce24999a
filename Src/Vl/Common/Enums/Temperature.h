#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The places where a temperature is measured.
namespace Enums::Temperature {

enum Type : int {
    Board = 0,
    Fpga = 1,
    Processor = 2,
    VideoChip = 3,
    PowerSupply = 4,
    AirInlet = 5,
    AirOutlet = 6,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Board, "Board"},
    {Fpga, "FPGA"},
    {Processor, "Processor"},
    {VideoChip, "Video chip"},
    {PowerSupply, "Power supply"},
    {AirInlet, "Air inlet"},
    {AirOutlet, "Air outlet"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::Temperature
