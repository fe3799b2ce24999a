#include "Tools/boardsim/Models/W1Id.h"

#include <charconv>
#include <cinttypes>
#include <cstdio>

namespace boardsim {
namespace {

constexpr std::size_t kFamilyDigits = 2;
constexpr std::size_t kSerialDigits = 12;

/// X^8 + X^5 + X^4 + 1, lowest bit first.
std::uint8_t crc8(std::uint8_t crc, std::uint8_t byte) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) {
        crc = static_cast<std::uint8_t>((crc & 1) != 0 ? (crc >> 1) ^ 0x8C : crc >> 1);
    }
    return crc;
}

}  // namespace

std::string W1Id::name() const {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "%02x-%012" PRIx64, static_cast<unsigned>(family), serial);
    return text.data();
}

std::array<std::byte, 8> W1Id::rom() const {
    std::array<std::byte, 8> bytes{};
    std::uint64_t rest = serial << 8 | family;
    std::uint8_t crc = 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); ++i, rest >>= 8) {
        const auto byte = static_cast<std::uint8_t>(rest);
        bytes[i] = std::byte{byte};
        crc = crc8(crc, byte);
    }
    bytes.back() = std::byte{crc};
    return bytes;
}

std::optional<W1Id> W1Id::named(std::string_view name) {
    if (name.size() <= kFamilyDigits || name[kFamilyDigits] != '-') {
        return std::nullopt;
    }
    W1Id id;
    const std::string_view number = name.substr(kFamilyDigits + 1, kSerialDigits);
    const auto family = std::from_chars(name.data(), name.data() + kFamilyDigits, id.family, 16);
    const auto serial = std::from_chars(number.data(), number.data() + number.size(), id.serial, 16);
    if (family.ptr != name.data() + kFamilyDigits || serial.ec != std::errc{}) {
        return std::nullopt;
    }
    return id;
}

}  // namespace boardsim
