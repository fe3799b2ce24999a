#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// The outcome of sending a synchronisation packet.
namespace Enums::SendSyncPacketRetval {

enum Type : int {
    Ok = 0,
    NoLink = 1,
    Busy = 2,
    Timeout = 3,
    Failed = 4,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Ok, "Ok"},
    {NoLink, "No link"},
    {Busy, "Busy"},
    {Timeout, "Timeout"},
    {Failed, "Failed"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::SendSyncPacketRetval
