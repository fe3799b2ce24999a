#include "Vl/Common/Identity/AddressParts.h"

namespace Valen {

MACAddress multicastIp2Mac(const SimpleIp& group) {
    const std::uint32_t address = group.hostOrder();
    return MACAddress({0x01, 0x00, 0x5E, static_cast<unsigned char>(address >> 16 & 0x7F),
                       static_cast<unsigned char>(address >> 8 & 0xFF),
                       static_cast<unsigned char>(address & 0xFF)});
}

std::uint32_t getMacLower4Bytes(const MACAddress& mac) {
    const MACAddress::Bytes& bytes = mac.bytes();
    return static_cast<std::uint32_t>(bytes[2]) << 24 | static_cast<std::uint32_t>(bytes[3]) << 16 |
           static_cast<std::uint32_t>(bytes[4]) << 8 | bytes[5];
}

std::uint16_t getMacHigher2Bytes(const MACAddress& mac) {
    return static_cast<std::uint16_t>(mac.bytes()[0] << 8 | mac.bytes()[1]);
}

}  // namespace Valen
