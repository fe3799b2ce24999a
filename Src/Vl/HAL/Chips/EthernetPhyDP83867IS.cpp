#include "Vl/HAL/Chips/EthernetPhyDP83867IS.h"

#include <array>
#include <cstddef>

#include "Vl/HAL/Chips/EthernetPhyRegisters.h"

namespace Valen::HAL {
namespace {

using namespace EthernetPhyRegister;
namespace LEDState = Enums::LEDState;

enum Register : int {
    Regcr = 13,  // what register Addar is just now
    Addar = 14,
    Physts = 17,
    Ledcr2 = 25,
};

/// Values of Regcr, for the extended registers (device 31).
constexpr int kExtendedAddress = 0x001F;
constexpr int kExtendedData = 0x401F;
constexpr int kNoExtended = 0;

constexpr int kSgmii10MConfig = 0x016F;  // an extended register
constexpr int kRateAdaptation = 1 << 7;

constexpr int kNegotiateAnew = kBmcrAutoNegotiation | kBmcrRestartNegotiation;

constexpr int kSpeedShift = 14;  // of Physts

/// What is offered, by the SPEED.
struct Offer {
    int gbcr;
    int anar;
};
constexpr int kAnar10 = kAnarIeee8023 | kAnar10Half | kAnar10Full;
constexpr int kAnar100 = kAnar10 | kAnar100Half | kAnar100Full | kAnar100T4;
constexpr int kTdrAutoRun =
    1 << 7;  // this chip's own bit of Gbcr: a link that goes down has its cable measured
constexpr std::array<Offer, 4> kOffers = {{
    {0, kAnarIeee8023},
    {0, kAnar10},
    {0, kAnar100},
    {kGbcr1000Full | kGbcr1000Half | kTdrAutoRun, kAnar100},
}};

/// Each LED has four bits of Ledcr2: driven by hand (1), the value (2), active high (4).
constexpr int kLedsOff = 0x0555;
constexpr int kLed0On = 0x0002;
constexpr int kLed1On = 0x0020;
constexpr int kLed2On = 0x0200;

/// What a state b adds.
int ledOf(LEDState::LEDState_T b) {
    switch (b) {
        case LEDState::FirstColour:
            return kLed2On;
        case LEDState::SecondColour:
        case LEDState::BothColours:
            return kLed1On;
        default:
            return 0;
    }
}

}  // namespace

bool EthernetPhyDP83867IS::initPhy() {
    const bool isSelected =
        setReg(Regcr, kExtendedAddress) && setReg(Addar, kSgmii10MConfig) && setReg(Regcr, kExtendedData);
    const int value = getReg(Addar);  // also when it is not selected: meant
    const bool isDone =
        isSelected && value != MDIO::kFailed && setReg(Addar, value & 0xFFFF & ~kRateAdaptation);
    setReg(Regcr, kNoExtended);
    return isDone;
}

GenericEthernetPhy::SPEED EthernetPhyDP83867IS::getLinkSpeed() {
    constexpr std::array<SPEED, 4> kSpeeds = {Mbit10, Mbit100, Mbit1000, Unknown};
    const int status = getReg(Physts);
    return status == MDIO::kFailed ? Unknown : kSpeeds[static_cast<std::size_t>(status >> kSpeedShift & 3)];
}

bool EthernetPhyDP83867IS::setSpeed(SPEED speed) {
    const auto index = static_cast<std::size_t>(speed);
    const Offer& offer = kOffers[index < kOffers.size() ? index : 0];
    const int before = getReg(Bmcr);
    if (before == MDIO::kFailed || !setReg(Bmcr, before & 0xFFFF & ~int{kBmcrAutoNegotiation}) ||
        !setReg(Gbcr, offer.gbcr) || !setReg(Anar, offer.anar)) {
        return false;
    }
    const int after = getReg(Bmcr);
    return after != MDIO::kFailed && setReg(Bmcr, after | kNegotiateAnew);
}

bool EthernetPhyDP83867IS::setLeds(LEDState::LEDState_T a, LEDState::LEDState_T b) {
    return setReg(Ledcr2, kLedsOff | (a == LEDState::FirstColour ? kLed0On : 0) | ledOf(b));
}

bool EthernetPhyDP83867IS::initUserEth() {
    return initPhy() && setLeds(LEDState::Off, LEDState::Off);
}

}  // namespace Valen::HAL
