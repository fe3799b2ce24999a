#pragma once

#include <array>
#include <cstdint>

#include "Vl/Common/Enums/LEDState.h"

namespace Valen {

/// A pattern for all of the board's two-colour LEDs: which of them shine in which colour, and how brightly.
/// A plain value; not thread-safe.
struct LEDControl {
    /// One bit an LED: all of the first word, then bits 63 down to 30 of the second; 98 LEDs.
    using Mask = std::array<std::uint64_t, 2>;

    static constexpr std::uint8_t kFullLevel = 100;
    static constexpr int kChanged = -1;
    static constexpr Mask kNone = {};
    static constexpr Mask kAll = {0xFFFFFFFFFFFFFFFF, 0xFFFFFFFFC0000000};

    std::uint8_t level = kFullLevel;
    Mask first = kNone;   ///< of the colour that is bit 1 of an LED state
    Mask second = kNone;  ///< of the colour that is bit 0
    int changeMark = 0;   ///< kChanged as soon as an operation was called

    /// Switches all LEDs off, and the level to full.
    void clear();
    /// Adds the state's colours to all LEDs. A colour that the state does not have stays as it was: meant;
    /// only Off takes both away.
    void setAll(Enums::LEDState::LEDState_T state);

    bool operator==(const LEDControl&) const = default;
};

}  // namespace Valen
