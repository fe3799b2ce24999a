#pragma once

#include <cstdint>

namespace Valen {

class I2CSlave;

/// A temperature sensor of the LM75 family with 12-bit resolution, on an I2C bus that it may share. Nothing
/// is logged. Source: data sheets of TI's TMP75 and of its relatives, "Register Map".
namespace Lm75 {

/// Sets the sensor at `address` to 12 bits and reads it; blocks for the transfers.
/// @param celsius whole degrees, truncated toward zero; as it was on failure.
/// @return false when the address cannot be selected or the sensor does not answer.
bool read(I2CSlave& bus, int address, int& celsius);

/// The temperature in a word as SMBus reads it: the register's high byte, which comes first, is in the low
/// half. @return whole degrees Celsius, -128 to 127, truncated toward zero.
int celsiusOf(std::uint16_t word);

}  // namespace Lm75

}  // namespace Valen
