#pragma once

#include <cstdint>

#include "Vl/HAL/Board/Vitc.h"

namespace Valen {

/// How long the frames are that a time code counts.
enum class VitcRate {
    Frames25,  ///< 40 ms
    Frames30,  ///< 1/30 s
};

/// A time of day as the two registers of the time code hold it: binary-coded decimal numbers with binary
/// groups (the user bits) in between. A plain value.
///
/// Each half of a word is one number: its units in bits 0-3, its tens from bit 8 on, and a byte of user bits,
/// whose low nibble is in bits 4-7 and whose high nibble in bits 12-15. From the lowest half up: frames (two
/// bits of tens), seconds (three), minutes (three), hours (two).
/// Source: SMPTE 12M, "Time and Control Code"; this hardware's arrangement of its groups.
struct VitcCode {
    std::uint32_t low = 0;
    std::uint32_t high = 0;

    /// The frames follow from the milliseconds; the day begins anew after its last second.
    static VitcCode pack(const Vitc& time, VitcRate rate);
    /// The milliseconds follow from the frames. Digits are not checked.
    Vitc unpack(VitcRate rate) const;

    bool operator==(const VitcCode&) const = default;
};

}  // namespace Valen
