#pragma once

/// The check digit of 13-digit article numbers (EAN-13; GS1 General Specifications, "check digit
/// calculation"). Any thread may use it.
namespace Valen::EAN13 {

/// Whether `value` carries the right check digit in its last place; 0 never does, although its digits add up.
/// Only the low thirteen decimal digits take part; a shorter number counts as filled with zeros in front.
/// @param checkDigit when given, receives the digit (0 to 9) that would be right in the last place.
bool calculateChecksum(unsigned long value, int* checkDigit = nullptr);

}  // namespace Valen::EAN13
