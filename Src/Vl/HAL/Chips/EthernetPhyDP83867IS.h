#pragma once

#include "Vl/HAL/Chips/GenericEthernetPhy.h"

namespace Valen::HAL {

/// The gigabit PHY DP83867IS, whose LEDs are driven by hand: LED_0 by state a, LED_2 and LED_1 by state b.
/// As GenericEthernetPhy; a sequence of accesses ends with the first that fails.
/// Source: Texas Instruments, DP83867IS data sheet (SNLS484), "Register Maps".
class EthernetPhyDP83867IS : public GenericEthernetPhy {
public:
    /// Switches the SGMII rate adaptation for 10 Mbit/s off.
    bool initPhy() override;
    SPEED getLinkSpeed() override;
    /// A speed other than the three leaves nothing on offer.
    bool setSpeed(SPEED speed) override;
    /// LED_0 is on when `a` is FirstColour; LED_2 when `b` is FirstColour; LED_1 when `b` has the second.
    bool setLeds(Enums::LEDState::LEDState_T a, Enums::LEDState::LEDState_T b) override;
    /// initPhy(), then LEDs off.
    bool initUserEth() override;
};

}  // namespace Valen::HAL
