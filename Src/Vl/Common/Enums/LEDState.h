#pragma once

/// The state of a two-colour LED: one bit a colour. Each driver maps the bits onto its own register; nobody
/// prints it, so it has no texts.
namespace Enums::LEDState {

enum LEDState_T : int {
    Off = 0,
    FirstColour = 1,
    SecondColour = 2,
    BothColours = 3,
};

/// Whether the number is one of the four states.
constexpr bool IsValidNum(long number) {
    return number >= Off && number <= BothColours;
}

/// The number of states.
constexpr int Size() {
    return BothColours + 1;
}

}  // namespace Enums::LEDState
