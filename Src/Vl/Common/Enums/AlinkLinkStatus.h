#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How far a high-speed audio link between two cards has come up.
namespace Enums::AlinkLinkStatus {

enum Type : int {
    Down = 0,      ///< no signal
    Training = 1,  ///< lanes are being aligned
    Up = 2,
    Failed = 3,  ///< up before, too many errors now
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Down, "Down"},
    {Training, "Training"},
    {Up, "Up"},
    {Failed, "Failed"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::AlinkLinkStatus
