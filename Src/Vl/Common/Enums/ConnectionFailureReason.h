#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// Why a connection could not be made.
namespace Enums::ConnectionFailureReason {

enum Type : int {
    None = 0,
    NoRoute = 1,
    NoBandwidth = 2,
    SourceMissing = 3,
    DestinationMissing = 4,
    DestinationLocked = 5,
    FormatMismatch = 6,
    FrameUnreachable = 7,
    NoRights = 8,
    Timeout = 9,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {NoRoute, "No route"},
    {NoBandwidth, "No bandwidth"},
    {SourceMissing, "Source missing"},
    {DestinationMissing, "Destination missing"},
    {DestinationLocked, "Destination locked"},
    {FormatMismatch, "Format mismatch"},
    {FrameUnreachable, "Frame unreachable"},
    {NoRights, "No rights"},
    {Timeout, "Timeout"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::ConnectionFailureReason
