#include "Vl/HAL/Fpga/cpld.h"

#include "Vl/HAL/Fpga/CoreLayout.h"

namespace Valen::HAL::cpld {

int getType() {
    constexpr int kVersionWord = 0;  // every core has one, an address perhaps not
    unsigned int version = 0;
    return getPldCoreInfo(deviceName, bus_breakout_name, &version, kVersionWord, -1, -1) == 1 ? 0 : 1;
}

bool getValidBit() {
    return true;
}

void invalidate() {}

void setFpgaReloadBit() {}

}  // namespace Valen::HAL::cpld
