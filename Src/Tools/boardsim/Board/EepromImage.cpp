#include "Tools/boardsim/Board/EepromImage.h"

namespace boardsim {
namespace {

constexpr unsigned kPolynomial = 0x1021;
constexpr std::size_t kHeaderBytes = 6;

void putLittleEndian(std::string& bytes, std::size_t at, unsigned value) {
    bytes[at] = static_cast<char>(value & 0xFF);
    bytes[at + 1] = static_cast<char>(value >> 8 & 0xFF);
}

unsigned crcOf(const std::string& bytes) {
    unsigned crc = 0;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned>(static_cast<unsigned char>(byte)) << 8;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc << 1 ^ ((crc & 0x8000) != 0 ? kPolynomial : 0)) & 0xFFFF;
        }
    }
    return crc;
}

std::string encode(const EepromField& field) {
    std::string bytes(kHeaderBytes, '\0');
    bytes += field.body;
    putLittleEndian(bytes, 2, static_cast<unsigned>(field.type));
    putLittleEndian(bytes, 4, static_cast<unsigned>(bytes.size()));
    putLittleEndian(bytes, 0, crcOf(bytes));
    return bytes;
}

}  // namespace

std::string encodeEeprom(std::span<const EepromField> fields) {
    std::string image;
    for (const EepromField& field : fields) {
        image += encode(field);
    }
    return image + encode({});
}

}  // namespace boardsim
