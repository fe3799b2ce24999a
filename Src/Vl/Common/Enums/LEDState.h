#pragma once

/// The state of a two-colour LED: one bit a colour. Each driver maps the bits onto its own register.
namespace Enums::LEDState {

enum LEDState_T : int {
    Off = 0,
    FirstColour = 1,
    SecondColour = 2,
    BothColours = 3,
};

}  // namespace Enums::LEDState
