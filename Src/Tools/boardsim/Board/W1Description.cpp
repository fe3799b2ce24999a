#include "Tools/boardsim/Board/W1Description.h"

namespace boardsim {
namespace {

std::uint16_t crc16(const std::vector<std::uint8_t>& data) {
    unsigned crc = 0;
    for (const std::uint8_t byte : data) {
        crc ^= static_cast<unsigned>(byte) << 8;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 0x8000) != 0 ? (crc << 1) ^ 0x1021 : crc << 1;
        }
    }
    return static_cast<std::uint16_t>(crc);
}

}  // namespace

std::vector<std::byte> encodeRecord(const std::vector<std::uint8_t>& data) {
    const std::uint16_t crc = crc16(data);
    std::vector<std::byte> bytes{std::byte(crc >> 8), std::byte(crc & 0xFF)};
    for (const std::uint8_t byte : data) {
        bytes.push_back(std::byte{byte});
    }
    return bytes;
}

}  // namespace boardsim
