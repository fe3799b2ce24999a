#pragma once

#include <array>

#include "Vl/Common/Enums/TextTable.h"

/// What a link's error and traffic counter counts.
namespace Enums::CounterSource {

enum Type : int {
    None = 0,
    ReceivedPackets = 1,
    SentPackets = 2,
    LostPackets = 3,
    CrcErrors = 4,
    CodeViolations = 5,
    LinkLosses = 6,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {None, "None"},
    {ReceivedPackets, "Received packets"},
    {SentPackets, "Sent packets"},
    {LostPackets, "Lost packets"},
    {CrcErrors, "CRC errors"},
    {CodeViolations, "Code violations"},
    {LinkLosses, "Link losses"},
});

VL_ENUM_FUNCTIONS(kRows);

}  // namespace Enums::CounterSource
