#pragma once

#include <string>
#include <string_view>

/// The CRC-16 of EEPROM records, bit by bit: polynomial 1021, start value 0.
unsigned int crcOf(std::string_view bytes);

/// A protected record: the CRC of the data, big-endian, and the data.
std::string record(const std::string& data);
