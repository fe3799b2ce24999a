#pragma once

#include <array>
#include <cstdint>

namespace boardsim {

/// Frames in a second.
enum class FrameRate : std::uint8_t { Fps25 = 25, Fps30 = 30 };

/// A time of day in frames, with the eight binary groups that travel along.
struct TimeCode {
    std::uint32_t seconds = 0;  ///< of the day, below 86,400
    std::uint32_t frames = 0;   ///< within the second, below the frame rate
    /// Groups 1 and 2 in the first byte, the odd ones in the low half, and so on.
    std::array<std::uint8_t, 4> userBits{};

    bool operator==(const TimeCode&) const = default;
};

/// A time code as vertical interval time code carries it, without its synchronisation bits: decimal digits
/// of which each is followed by a binary group.
///
/// | bits  | digit         | group | bits  | digit        | group |
/// |-------|---------------|-------|-------|--------------|-------|
/// | 0-3   | frame units   | 4-7   | 32-35 | minute units | 36-39 |
/// | 8-9   | frame tens    | 12-15 | 40-42 | minute tens  | 44-47 |
/// | 16-19 | second units  | 20-23 | 48-51 | hour units   | 52-55 |
/// | 24-26 | second tens   | 28-31 | 56-57 | hour tens    | 60-63 |
///
/// The bits in between are flags, and zero here.
using TimeCodeBits = std::uint64_t;

TimeCodeBits encode(const TimeCode& time);

/// The time code `frames` later, after the last frame of a day the first one of the next. Groups and flags
/// stay. Digits that no time code has are taken at their weight.
TimeCodeBits later(TimeCodeBits bits, std::uint64_t frames, FrameRate rate);

}  // namespace boardsim
