// A card's identity ROM of any content: what it says stays what its bytes say, and a fault is named.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "Fuzz/Require.h"
#include "Vl/HAL/Board/CardRom.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Valen::CardRom::Image image{};
    std::memcpy(image.data(), data, std::min(size, image.size()));
    const Valen::CardRom rom = Valen::CardRom::parse(image);
    require(std::memcmp(&rom.macs, image.data() + 16, 12) == 0);
    require(std::memcmp(&rom.version, image.data() + 28, 8) == 0);
    require(rom.version.words[2] == 0 || std::memcmp(&rom.version.words[2], image.data() + 36, 4) == 0);
    require(rom.version.words[2] == 0 || rom.version.words[2] >> 31 == 1);
    require(std::memcmp(&rom.serial, image.data() + 40, 16) == 0);
    const auto fault = rom.fault();
    if (!fault) {
        require(image[31] == std::byte{0x80});
        require(rom.serial.number != 0);
        return 0;
    }
    require(fault->starts_with("invalid MAC: ") || fault->starts_with("invalid version: CT: 0x") ||
            fault->starts_with("invalid serial: "));
    return 0;
}
