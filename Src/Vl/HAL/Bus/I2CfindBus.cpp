#include "Vl/HAL/Bus/I2CfindBus.h"

#include <algorithm>

#include "Vl/HAL/Bus/I2CRegisteredDevice.h"

namespace Valen {

int I2CfindBus(const std::string& name) {
    return std::max(I2CRegisteredDevice::getBusOf(name.c_str()), -1);
}

int I2CfindBus(const std::string& name, unsigned index) {
    return I2CfindBus(name + std::to_string(index));
}

}  // namespace Valen
