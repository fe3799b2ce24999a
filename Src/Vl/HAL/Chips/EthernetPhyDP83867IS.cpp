#include "Vl/HAL/Chips/EthernetPhyDP83867IS.h"

#include <array>
#include <cstddef>

#include "Vl/HAL/Chips/EthernetPhyFields.h"
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

/// What is offered, by the SPEED.
struct Offer {
    int gbcr;
    int anar;
};
constexpr int kAnar10 = kAnarIeee8023 | kAnar10Half | kAnar10Full;
constexpr int kAnar100 = kAnar10 | kAnar100Half | kAnar100Full | kAnar100T4;
/// This chip's own bit of Gbcr: a link that goes down has its cable measured.
constexpr int kTdrAutoRun = 1 << 7;
constexpr std::array<Offer, 4> kOffers = {{
    {0, kAnarIeee8023},
    {0, kAnar10},
    {0, kAnar100},
    {kGbcr1000Full | kGbcr1000Half | kTdrAutoRun, kAnar100},
}};

/// Each LED has four bits of Ledcr2: driven by hand (1), the value (2), active high (4).
constexpr EthernetPhyField::Leds kLeds = {
    .off = 0x0555,
    .aFirst = 0x0002,   // LED_0
    .bFirst = 0x0200,   // LED_2
    .bSecond = 0x0020,  // LED_1
};

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
    return EthernetPhyField::linkSpeed(getReg(Physts));
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
    return setReg(Ledcr2, static_cast<int>(kLeds.showing(a, b)));
}

bool EthernetPhyDP83867IS::initUserEth() {
    return initPhy() && setLeds(LEDState::Off, LEDState::Off);
}

}  // namespace Valen::HAL
