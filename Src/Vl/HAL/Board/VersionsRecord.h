#pragma once

#include <cstdint>
#include <string>

namespace Valen {

namespace eeprom {
struct DeviceDescription;
struct PcbDescription;
}  // namespace eeprom

/// What the newer board's EEPROM tells of the board's origin. A plain record, all zero until taken from the
/// EEPROM's fields. Positions below are in bytes from the start of a field, its header included; words are
/// little-endian. A field that ends before a value leaves that value as it was.
struct VersionsRecord {
    /// Takes what the device description tells: both serials and the two device values.
    void take(const eeprom::DeviceDescription& device);
    /// Takes what the PCB description tells: version and revision.
    void take(const eeprom::PcbDescription& pcb);

    /// The 13 decimal digits from byte 6 on, two in a byte, high nibble first. 0 for more than
    /// 9,999,999,999,999, which takes nibbles that are no digits.
    std::uint64_t serial = 0;
    /// The low halves of the 64-bit words at 24 and 32.
    std::uint32_t deviceValue1 = 0;
    std::uint32_t deviceValue2 = 0;
    /// The word at 40 with the one at 42 laid over it eight bits higher, and 3 as the top byte.
    std::uint32_t pcbVersion = 0;
    /// The hexadecimal number in the three characters at 44, read as far as there are digits.
    std::uint32_t pcbRevision = 0;
    /// Nothing fills this.
    std::uint32_t reserved = 0;
    /// Bytes 6 to 14 of the device description as 18 hexadecimal digits in lower case.
    std::string serialText;
};

}  // namespace Valen
