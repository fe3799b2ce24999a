#include "Tests/HAL/Checksum.h"

unsigned int crcOf(std::string_view bytes) {
    unsigned int crc = 0;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned int>(static_cast<unsigned char>(byte)) << 8;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 0x8000) != 0 ? crc << 1 ^ 0x1021 : crc << 1;
        }
        crc &= 0xFFFF;
    }
    return crc;
}

std::string record(const std::string& data) {
    const unsigned int crc = crcOf(data);
    return std::string{static_cast<char>(crc >> 8), static_cast<char>(crc & 0xFF)} + data;
}
