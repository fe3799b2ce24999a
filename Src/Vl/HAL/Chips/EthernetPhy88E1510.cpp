#include "Vl/HAL/Chips/EthernetPhy88E1510.h"

#include "Vl/HAL/Chips/EthernetPhyFields.h"
#include "Vl/HAL/Chips/EthernetPhyRegisters.h"

namespace Valen::HAL {
namespace {

using namespace EthernetPhyRegister;
namespace LEDState = Enums::LEDState;

enum Register : int {
    LedFunction = 16,   // on the LED page
    CopperStatus = 17,  // on the copper page
    Page = 22,
};

enum PageNumber : int {
    CopperPage = 0,
    LedPage = 3,
};

/// Each LED has four bits of LedFunction; 8 forces it off, 9 on.
constexpr EthernetPhyField::Leds kLeds = {
    .off = 0x0888,
    .aFirst = 0x0100,   // LED[2]
    .bFirst = 0x0001,   // LED[0]
    .bSecond = 0x0010,  // LED[1]
};

}  // namespace

GenericEthernetPhy::SPEED EthernetPhy88E1510::getLinkSpeed() {
    return EthernetPhyField::linkSpeed(setReg(Page, CopperPage) ? getReg(CopperStatus) : MDIO::kFailed);
}

bool EthernetPhy88E1510::setSpeed(SPEED speed) {
    if (speed != Mbit10 && speed != Mbit100 && speed != Mbit1000) {
        return false;
    }
    unsigned bmcr = 0;
    unsigned gbcr = 0;
    unsigned anar = 0;
    getDefaultRegisterValues(&bmcr, &gbcr, &anar);
    gbcr |= speed == Mbit1000 ? kGbcr1000Full | kGbcr1000Half : 0;
    anar |= speed == Mbit10 ? 0 : kAnar100Full;
    return setReg(Page, CopperPage) && setReg(Gbcr, static_cast<int>(gbcr)) &&
           setReg(Anar, static_cast<int>(anar)) && setReg(Bmcr, static_cast<int>(bmcr));
}

bool EthernetPhy88E1510::setLeds(LEDState::LEDState_T a, LEDState::LEDState_T b) {
    const unsigned leds = getLEDs(a, b);
    if (leds == lastLeds_) {
        return true;
    }
    lastLeds_ = leds;  // before it is known whether the chip takes it: meant
    return setReg(Page, LedPage) && setReg(LedFunction, static_cast<int>(leds)) && setReg(Page, CopperPage);
}

bool EthernetPhy88E1510::initUserEth() {
    return setLeds(LEDState::Off, LEDState::Off);
}

void EthernetPhy88E1510::getDefaultRegisterValues(unsigned* bmcr, unsigned* gbcr, unsigned* anar) {
    *bmcr = kBmcrReset | kBmcrAutoNegotiation | kBmcrFullDuplex | kBmcrSpeed1000;
    *gbcr = 0;
    *anar = kAnarIeee8023 | kAnar10Full | kAnarAsymmetricPause;
}

unsigned EthernetPhy88E1510::getLEDs(LEDState::LEDState_T a, LEDState::LEDState_T b) {
    return kLeds.showing(a, b);
}

}  // namespace Valen::HAL
