#pragma once

#include <cstdint>

#include "Vl/Common/Identity/MACAddress.h"
#include "Vl/Common/Identity/SimpleIp.h"

namespace Valen {

// Pure functions; any thread may use them.

/// The Ethernet address of an IPv4 multicast group: 01:00:5E and the group's low 23 bits (RFC 1112, 6.4).
MACAddress multicastIp2Mac(const SimpleIp& group);

/// Bytes 2-5 as a big-endian number.
std::uint32_t getMacLower4Bytes(const MACAddress& mac);
/// Bytes 0-1 as a big-endian number.
std::uint16_t getMacHigher2Bytes(const MACAddress& mac);

}  // namespace Valen
