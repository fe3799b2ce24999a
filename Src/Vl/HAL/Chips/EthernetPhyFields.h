#pragma once

#include <array>
#include <cstddef>

#include "Vl/Common/Enums/LEDState.h"
#include "Vl/HAL/Bus/MDIO.h"
#include "Vl/HAL/Chips/GenericEthernetPhy.h"

/// Fields of registers of the chips' own that look alike in all of them.
namespace Valen::HAL::EthernetPhyField {

/// The link's speed, which is in the top two of a status register's 16 bits. Unknown for a register that
/// cannot be read.
inline GenericEthernetPhy::SPEED linkSpeed(int status) {
    using Phy = GenericEthernetPhy;
    constexpr std::array kSpeeds = {Phy::Mbit10, Phy::Mbit100, Phy::Mbit1000, Phy::Unknown};
    return status == MDIO::kFailed ? Phy::Unknown : kSpeeds[static_cast<std::size_t>(status >> 14 & 3)];
}

/// Values of a register that drives a port's LEDs by hand: all off, and the bits that each state adds.
struct Leds {
    unsigned int off;
    unsigned int aFirst;
    unsigned int bFirst;
    unsigned int bSecond;

    /// State a lights its LED with its first colour only; of b the second colour counts more than the first.
    constexpr unsigned int showing(Enums::LEDState::LEDState_T a, Enums::LEDState::LEDState_T b) const {
        namespace LEDState = Enums::LEDState;
        const bool hasSecond = b == LEDState::SecondColour || b == LEDState::BothColours;
        return off | (a == LEDState::FirstColour ? aFirst : 0) | (b == LEDState::FirstColour ? bFirst : 0) |
               (hasSecond ? bSecond : 0);
    }
};

}  // namespace Valen::HAL::EthernetPhyField
