#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How urgent an alarm is.
namespace Enums::AlarmPriority {

enum AlarmPriority_T : int {
    Error = 1,
    Warning = 2,
    Info = 3,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Error, "Error"},
    {Warning, "Warning"},
    {Info, "Info"},
});

/// On purpose all calls share one buffer, in which any other number is written as "unknown (%d)".
/// Such a text lasts until the next one is asked for, and two threads must not ask for them at the same time.
/// @return the value's text, else the number as said; never null.
const char* GetText(AlarmPriority_T priority);

VL_ENUM_FUNCTIONS_BUT_TEXT(AlarmPriority_T, kRows);

}  // namespace Enums::AlarmPriority
