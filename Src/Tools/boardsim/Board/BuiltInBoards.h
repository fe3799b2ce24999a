#pragma once

#include "Tools/boardsim/Board/BoardDescription.h"

namespace boardsim {

/// The newer board, with its expanders, sensors and EEPROM on I2C, healthy.
BoardDescription makeOrca();

/// The older board: no I2C, a miscellaneous register, and a video chip on SPI; healthy.
BoardDescription makeHd24();

}  // namespace boardsim
