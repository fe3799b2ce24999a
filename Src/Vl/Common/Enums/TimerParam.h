#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The settings of a multiviewer's timer.
namespace Enums::TimerParam {

enum Type : int {
    Command = 0,
    Direction = 1,
    StartValue = 2,
    StopValue = 3,
    Format = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Command, "Command"},
    {Direction, "Direction"},
    {StartValue, "Start value"},
    {StopValue, "Stop value"},
    {Format, "Format"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::TimerParam
