#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// How a channel appears in NMOS (AMWA IS-04 and IS-05).
namespace Enums::NmosChannelMode {

enum Type : int {
    Off = 0,
    Sender = 1,
    Receiver = 2,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Off, "Off"},
    {Sender, "Sender"},
    {Receiver, "Receiver"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::NmosChannelMode
