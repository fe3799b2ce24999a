#include "Vl/HAL/Chips/ADVI2C.h"

#include "Vl/HAL/Bus/I2CRegisteredDevice.h"

namespace Valen {

bool ADVI2C::init(const char* name) {
    const I2CAddress place = I2CRegisteredDevice::getAddressOf(name);
    if (place.name[0] == '\0') {
        return false;
    }
    return i2c_.init(static_cast<int>(place.bus), false) && i2c_.selectSlave(static_cast<int>(place.address));
}

int ADVI2C::setReg(int reg, std::uint8_t value) {
    return i2c_.write(reg, value) ? 1 : 0;
}

int ADVI2C::getReg(int reg) {
    return i2c_.read8(reg);
}

}  // namespace Valen
