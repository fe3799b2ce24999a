#pragma once

#include <cstdint>

/// CRC-16 with polynomial 0x1021, not reflected, without a final XOR; with start value 0 (all EEPROM records)
/// it is CRC-16/XMODEM. Pure functions: any thread may use them. Of a start value only the low 16 bits count.
namespace Valen::CRC16 {

/// The CRC after one more byte. @return 0 to 0xFFFF.
constexpr unsigned int UpdateCRC(unsigned char byte, unsigned int crc) {
    auto state = static_cast<std::uint16_t>((crc << 8) | ((crc >> 8) & 0xFF));
    state = static_cast<std::uint16_t>(state ^ byte);
    state = static_cast<std::uint16_t>(state ^ ((state & 0xFF) >> 4));
    state = static_cast<std::uint16_t>(state ^ (state << 12));
    state = static_cast<std::uint16_t>(state ^ ((state & 0xFF) << 5));
    return state;
}

/// The CRC after `length` more bytes, the same as UpdateCRC over each of them. A length of 0 or less reads
/// nothing and returns `crc` as given; `data` may then be null.
unsigned int CalcCRC(const void* data, int length, unsigned int crc);

}  // namespace Valen::CRC16
