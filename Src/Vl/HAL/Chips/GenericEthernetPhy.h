#pragma once

#include <memory>

#include "Vl/Common/Enums/LEDState.h"
#include "Vl/HAL/Bus/MDIO.h"

namespace Valen::HAL {

/// An Ethernet PHY of any make: what every PHY can answer, and operations that do nothing and report failure
/// until a chip's own class knows better. Shares its accessor; one thread at a time. Blocks as the accessor
/// does. Without an accessor every operation fails. Nothing is logged here.
/// Register numbers: IEEE 802.3, clause 22.2.4, "Management functions".
class GenericEthernetPhy {
public:
    enum SPEED : int {
        Unknown = 0,
        Mbit10 = 1,
        Mbit100 = 2,
        Mbit1000 = 3,
    };

    virtual ~GenericEthernetPhy() = default;
    /// Makes the chip ready for use. @return false on failure, here and below.
    virtual bool initPhy();
    /// @return whether there is a link; false also when the chip cannot tell.
    virtual bool getLinkUp();
    /// @return the speed of the link; Unknown also when the chip cannot tell.
    virtual SPEED getLinkSpeed();
    /// Restricts what is offered in auto-negotiation, and starts it anew.
    virtual bool setSpeed(SPEED speed);
    /// Shows two LED states at the port's LEDs.
    virtual bool setLeds(Enums::LEDState::LEDState_T a, Enums::LEDState::LEDState_T b);
    /// Makes the chip ready as the PHY of the user port.
    virtual bool initUserEth();

    /// Takes the accessor, which knows the PHY's address.
    void setMDIO(const std::shared_ptr<MDIO>& mdio);

    /// The two halves of the chip's identifier, registers 2 and 3; MDIO::kFailed on failure.
    int getPhyId1();
    int getPhyId2();

protected:
    /// As the accessor's; failing without one.
    bool setReg(int reg, int value);
    int getReg(int reg);

private:
    std::shared_ptr<MDIO> mdio_;
};

}  // namespace Valen::HAL
