#include "Tools/boardsim/Board/RomDescription.h"

namespace boardsim {
namespace {

void append(std::vector<std::uint8_t>& bytes, std::uint64_t value, std::size_t width) {
    for (std::size_t i = 0; i < width; ++i, value >>= 8) {
        bytes.push_back(static_cast<std::uint8_t>(value & 0xFF));
    }
}

}  // namespace

std::vector<std::uint8_t> encodeRom(const RomPart& rom) {
    std::vector<std::uint8_t> bytes(rom.start.begin(), rom.start.end());
    for (const MacAddress& mac : rom.macs) {
        bytes.insert(bytes.end(), mac.begin(), mac.end());
    }
    for (const std::uint32_t word : rom.version) {
        append(bytes, word, sizeof word);
    }
    append(bytes, rom.serial.number, sizeof rom.serial.number);
    append(bytes, static_cast<std::uint32_t>(rom.serial.produced), sizeof rom.serial.produced);
    append(bytes, static_cast<std::uint32_t>(rom.serial.serviced), sizeof rom.serial.serviced);
    return bytes;
}

}  // namespace boardsim
