#pragma once

#include <array>
#include <cstddef>

#include "Vl/Common/Enums/TextTable.h"

/// How much time one packet of an audio stream covers (the packet times of AES67 and SMPTE ST 2110-30).
namespace Enums::Aes67PacketTime {

enum Type : int {
    Us125 = 0,
    Us250 = 1,
    Us333 = 2,
    Us500 = 3,
    Ms1 = 4,
    Ms1_333 = 5,
    Ms4 = 6,
};

inline constexpr auto kRows = std::to_array<TextRow>({
    {Us125, "125us"},
    {Us250, "250us"},
    {Us333, "333us"},
    {Us500, "500us"},
    {Ms1, "1ms"},
    {Ms1_333, "1.333ms"},
    {Ms4, "4ms"},
});

VL_ENUM_FUNCTIONS(kRows);

inline constexpr std::array kPacketsPerSec = {8000, 4000, 3000, 2000, 1000, 750, 250};
static_assert(kPacketsPerSec.size() == static_cast<std::size_t>(Size()), "a rate for every packet time");

/// @return packets per second; -1 for a number that is no packet time.
constexpr int getPacketsPerSec(Type packetTime) {
    return IsValidNum(packetTime) ? kPacketsPerSec[static_cast<std::size_t>(packetTime)] : -1;
}

/// @return the packet time in microseconds, rounded down; -1000000, on purpose, for a number that is none.
constexpr int getPacketTimeUs(Type packetTime) {
    return 1000000 / getPacketsPerSec(packetTime);
}

}  // namespace Enums::Aes67PacketTime
