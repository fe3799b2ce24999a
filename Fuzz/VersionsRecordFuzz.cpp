// Fields of the board's EEPROM with any content and of any length: values stay within their bounds, and so do
// reads.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Fuzz/Require.h"
#include "Vl/HAL/Board/Eeprom.h"
#include "Vl/HAL/Board/VersionsRecord.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kHeader = 6;
    if (size < kHeader || size > 1024) {
        return 0;
    }
    // Memory of its own: the field's length is what there is.
    std::vector<std::uint8_t> bytes(data, data + size);
    bytes[4] = static_cast<std::uint8_t>(size);
    bytes[5] = static_cast<std::uint8_t>(size >> 8);
    const auto* field = reinterpret_cast<const Valen::eeprom::Field*>(bytes.data());
    Valen::VersionsRecord versions;
    versions.take(*static_cast<const Valen::eeprom::DeviceDescription*>(field));
    versions.take(*static_cast<const Valen::eeprom::PcbDescription*>(field));
    require(versions.serial <= 9'999'999'999'999);
    require(versions.serialText.size() == (size < 15 ? 0 : 18));
    require(versions.serialText.find_first_not_of("0123456789abcdef") == std::string::npos);
    require(versions.pcbVersion >> 24 == (size < 44 ? 0 : 3));
    require(versions.pcbRevision <= 0xFFF);
    require(versions.reserved == 0);
    return 0;
}
