#pragma once

#include <string>

#include "Tools/boardsim/Models/I2cBus.h"

namespace boardsim {

/// A transfer as the trace writes it: "i2c-1 0x48 write 0x01 0x60", "i2c-1 0x48 write 0x00, read 0x19 0x00",
/// "i2c-1 0x4d write: No such device or address". Of many bytes the first 16 are shown.
std::string describe(const std::string& bus, const I2cEvent& event);

}  // namespace boardsim
