#pragma once

#include "Vl/HAL/Chips/GenericEthernetPhy.h"

namespace Valen::HAL {

/// The gigabit PHY 88E1510, whose LEDs are driven by hand: LED[2] by state a, LED[0] and LED[1] by state b.
/// As GenericEthernetPhy; a sequence of accesses ends with the first that fails.
/// Source: Marvell, 88E1510 data sheet, "Register Description".
class EthernetPhy88E1510 : public GenericEthernetPhy {
public:
    SPEED getLinkSpeed() override;
    /// Resets the chip with what is offered. A speed other than the three fails, with nothing written.
    bool setSpeed(SPEED speed) override;
    /// Shows getLEDs(a, b). What was asked for last is not written again, even if writing it has failed.
    bool setLeds(Enums::LEDState::LEDState_T a, Enums::LEDState::LEDState_T b) override;
    /// LEDs off.
    bool initUserEth() override;
    /// The registers 0, 9 and 4 that setSpeed() starts from, for a subclass to change: 10 Mbit/s on offer.
    virtual void getDefaultRegisterValues(unsigned* bmcr, unsigned* gbcr, unsigned* anar);

    /// The LED control value: LED[2] is on when `a` is FirstColour; LED[0] when `b` is FirstColour, LED[1]
    /// when `b` has the second colour.
    static unsigned getLEDs(Enums::LEDState::LEDState_T a, Enums::LEDState::LEDState_T b);

private:
    static constexpr unsigned kNoLeds = 0;  // no request has this value

    unsigned lastLeds_ = kNoLeds;
};

}  // namespace Valen::HAL
