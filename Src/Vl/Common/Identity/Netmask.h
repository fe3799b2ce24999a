#pragma once

#include <cstdint>

#include "Vl/Common/Identity/SimpleIp.h"
#include "Vl/Common/Strings/SimpleString.h"

namespace Valen {

// Netmasks as prefix length, number, address and text. Pure functions; any thread may use them.

/// @return the number of leading one bits, 0 to 32. What follows the first zero bit does not matter.
int getNetmaskBitsFromIp(SimpleIp mask);

/// @return all ones shifted left by (32 - bits) modulo 32: 24 gives 0xFFFFFF00, the first octet in bits
/// 24-31. On purpose 0 gives all ones, as 32 does: a prefix of length zero cannot be had from here. Other
/// numbers count modulo 32.
std::uint32_t getNetmaskIntMask(int bits);

/// @return the prefix length (0 to 32) of a dotted mask such as "255.255.255.0"; -1 when `text` is null, no
/// address, or its ones are not all in front.
int getNetmaskBitsFromString(const char* text);

/// @return the dotted mask of a prefix length, 0 ("0.0.0.0") to 32; empty for any other number.
SimpleString getNetmaskString(int bits);

/// Takes "10.0.0.1/24" or "10.0.0.1/255.255.255.0" apart. @return false, with nothing changed, when `text` is
/// null or anything else, or the prefix length is not within 0 to 32.
bool separateSwitchIPAndMask(const char* text, SimpleIp& ip, SimpleIp& mask);

}  // namespace Valen
