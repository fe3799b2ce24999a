#include "Vl/Common/Identity/CRC16.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace Valen::CRC16 {
namespace {

// Sixteen bytes are taken at once: row n holds what each byte value leaves in the CRC after n more bytes, and
// since the CRC is linear the contributions of the sixteen bytes are only XORed. One table would wait for
// each byte's result before it could begin the next.
constexpr std::size_t kSlices = 16;
using Row = std::array<std::uint16_t, 256>;

constexpr auto kTable = [] {
    std::array<Row, kSlices> table{};
    for (unsigned int byte = 0; byte < 256; ++byte) {
        unsigned int crc = UpdateCRC(static_cast<unsigned char>(byte), 0);
        for (Row& row : table) {
            row[byte] = static_cast<std::uint16_t>(crc);
            crc = UpdateCRC(0, crc);
        }
    }
    return table;
}();

template <std::size_t... Index>
unsigned int updateSlices(const unsigned char* bytes, unsigned int crc, std::index_sequence<Index...>) {
    // In this order: these do not wait for the CRC of the bytes before, and clang keeps the order.
    const unsigned int others = (kTable[kSlices - 3 - Index][bytes[2 + Index]] ^ ...);
    const unsigned int first = kTable[kSlices - 1][bytes[0] ^ ((crc >> 8) & 0xFF)];
    const unsigned int second = kTable[kSlices - 2][bytes[1] ^ (crc & 0xFF)];
    return others ^ (first ^ second);
}

}  // namespace

unsigned int CalcCRC(const void* data, int length, unsigned int crc) {
    const auto* bytes = static_cast<const unsigned char*>(data);
    for (; length >= static_cast<int>(kSlices); length -= static_cast<int>(kSlices)) {
        crc = updateSlices(bytes, crc, std::make_index_sequence<kSlices - 2>());
        bytes += kSlices;
    }
    for (; length > 0; --length) {
        crc = UpdateCRC(*bytes++, crc);
    }
    return crc;
}

}  // namespace Valen::CRC16
