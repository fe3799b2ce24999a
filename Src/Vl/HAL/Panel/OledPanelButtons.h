#pragma once

#include <cstdint>

namespace Valen {

/// What was done at the panel's controls between two polls, packed into one word.
struct OledPanelButtons {
    /// Bits 16-18, 19-21, 22-24: presses of the left, right and red button, each modulo 8.
    /// Bits 27-31: encoder steps, two's complement. The other bits are 0.
    std::uint32_t word = 0;

    /// Presses, 0 to 7, of the buttons beside the screen and of the encoder.
    int left() const { return presses(16); }
    int right() const { return presses(19); }
    int redPush() const { return presses(22); }

    /// Steps of the encoder, -16 to 15; negative is counter-clockwise.
    int encoderSteps() const { return static_cast<std::int32_t>(word) >> 27; }

    /// Whether anything was done.
    bool any() const { return (word & kActivity) != 0; }

private:
    /// All fields, and bit 9 as well: no panel sets it today, but it counts as activity on purpose.
    static constexpr std::uint32_t kActivity = 0xF9FF0200;

    int presses(int lowestBit) const { return static_cast<int>(word >> lowestBit & 7); }
};

}  // namespace Valen
