#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What a receiver makes of its signal.
namespace Enums::SignalStatus {

enum Type : int {
    NoSignal = 0,
    Unlocked = 1,  ///< a signal, yet no known rate
    WrongFormat = 2,
    Errors = 3,  ///< locked, with errors
    Ok = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {NoSignal, "No signal"},
    {Unlocked, "Unlocked"},
    {WrongFormat, "Wrong format"},
    {Errors, "Errors"},
    {Ok, "Ok"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::SignalStatus
