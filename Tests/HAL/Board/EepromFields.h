#pragma once

#include <string>

#include "Tests/HAL/Checksum.h"

/// A 16-bit word as EEPROM images have it.
inline std::string littleEndian(unsigned int word) {
    return {static_cast<char>(word & 0xFF), static_cast<char>(word >> 8)};
}

/// One field of an EEPROM image, with its header and the right CRC.
inline std::string field(unsigned int type, const std::string& body) {
    const std::string rest =
        littleEndian(type) + littleEndian(static_cast<unsigned int>(6 + body.size())) + body;
    return littleEndian(crcOf(std::string(2, '\0') + rest)) + rest;
}
