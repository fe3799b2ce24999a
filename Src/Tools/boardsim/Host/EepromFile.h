#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "Tools/boardsim/Host/ActingFile.h"
#include "Tools/boardsim/Models/I2cBus.h"

namespace boardsim {

/// What the kernel's driver for serial EEPROMs is told of a chip.
struct EepromPlace {
    std::uint8_t address = 0;
    std::size_t bytes = 0;
    std::size_t pageBytes = 0;
    std::size_t addressBytes = 0;
};

/// The "eeprom" file that the kernel's driver makes: the memory, byte for byte, read and written over the
/// bus. A write goes page by page; while the chip is programming, an access is tried again until it answers,
/// for 25 milliseconds at most, and then fails with ETIMEDOUT. Reading ends at the end of the memory; writing
/// behind it is refused with EFBIG. Source: the kernel's drivers/misc/eeprom/at24.c as its users see it,
/// Documentation/driver-api/nvmem.rst.
ActingFile eepromFile(std::string path, I2cBus& bus, const EepromPlace& place);

}  // namespace boardsim
