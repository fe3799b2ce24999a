#include "Vl/HAL/Chips/GenericEthernetPhy.h"

#include "Vl/HAL/Chips/EthernetPhyRegisters.h"

namespace Valen::HAL {

bool GenericEthernetPhy::initPhy() {
    return false;
}

bool GenericEthernetPhy::getLinkUp() {
    return false;
}

GenericEthernetPhy::SPEED GenericEthernetPhy::getLinkSpeed() {
    return Unknown;
}

bool GenericEthernetPhy::setSpeed(SPEED /*speed*/) {
    return false;
}

bool GenericEthernetPhy::setLeds(Enums::LEDState::LEDState_T /*a*/, Enums::LEDState::LEDState_T /*b*/) {
    return false;
}

bool GenericEthernetPhy::initUserEth() {
    return false;
}

void GenericEthernetPhy::setMDIO(const std::shared_ptr<MDIO>& mdio) {
    mdio_ = mdio;
}

int GenericEthernetPhy::getPhyId1() {
    return getReg(EthernetPhyRegister::PhyId1);
}

int GenericEthernetPhy::getPhyId2() {
    return getReg(EthernetPhyRegister::PhyId2);
}

bool GenericEthernetPhy::setReg(int reg, int value) {
    return mdio_ && mdio_->setReg(reg, value);
}

int GenericEthernetPhy::getReg(int reg) {
    return mdio_ ? mdio_->getReg(reg) : MDIO::kFailed;
}

}  // namespace Valen::HAL
