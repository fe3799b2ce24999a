#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

/// Bytes written as digits through tables, several characters with one store: what hex dumps are made of. Any
/// thread may use these.
namespace Valen::HexDigits {

using Bytes = std::span<const unsigned char>;

/// How each byte is printed: two or three characters, the first in the lowest bits, zeros behind the last.
using ByteTexts = std::array<std::uint32_t, 256>;

inline constexpr std::size_t kDigitsLength = 2;
inline constexpr std::size_t kDigitsAndBlankLength = 3;

constexpr std::uint32_t word(char first, char second, char third = '\0') {
    return static_cast<std::uint32_t>(first | second << 8 | third << 16);
}

constexpr ByteTexts makeByteTexts(const char* digits, char third = '\0') {
    ByteTexts texts{};
    for (std::size_t byte = 0; byte < texts.size(); ++byte) {
        texts[byte] = word(digits[byte / 16], digits[byte % 16], third);
    }
    return texts;
}

inline constexpr ByteTexts kUpperCase = makeByteTexts("0123456789ABCDEF");
inline constexpr ByteTexts kUpperCaseAndBlank = makeByteTexts("0123456789ABCDEF", ' ');
inline constexpr ByteTexts kLowerCase = makeByteTexts("0123456789abcdef");

/// Bytes from '0' to 'z' show the character itself.
constexpr ByteTexts makeMixedTexts() {
    ByteTexts texts = kLowerCase;
    for (std::size_t byte = '0'; byte <= 'z'; ++byte) {
        texts[byte] = word('<', static_cast<char>(byte));
    }
    return texts;
}

inline constexpr ByteTexts kMixed = makeMixedTexts();

/// Characters are written eight at a time, and this many of them lie behind the text's end at most.
inline constexpr std::size_t kSlack = sizeof(std::uint64_t) - kDigitsLength;

static_assert(std::endian::native == std::endian::little);

inline void putWord(char* at, std::uint64_t characters) {
    std::memcpy(at, &characters, sizeof(characters));
}

/// Writes the texts of all `bytes`, `length` characters each. @return the end.
inline char* put(char* at, Bytes bytes, const ByteTexts& texts, std::size_t length) {
    std::size_t index = 0;
    for (; index + 1 < bytes.size(); index += 2) {
        putWord(at, texts[bytes[index]] | std::uint64_t{texts[bytes[index + 1]]} << (8 * length));
        at += 2 * length;
    }
    if (index < bytes.size()) {
        putWord(at, texts[bytes[index]]);
        at += length;
    }
    return at;
}

inline std::uint64_t eightDigits(std::uint32_t value, const ByteTexts& digits) {
    std::uint64_t characters = 0;
    for (int byte = 0; byte < 4; ++byte) {
        characters = characters << 16 | digits[value & 0xFF];
        value >>= 8;
    }
    return characters;
}

/// Writes `value` in at least eight digits. @return the end.
inline char* putNumber(char* at, std::uint64_t value, const ByteTexts& digits) {
    const auto high = static_cast<std::uint32_t>(value >> 32);
    if (high != 0) {
        const int zeros = std::countl_zero(high) / 4;
        putWord(at, eightDigits(high, digits) >> (8 * zeros));
        at += 8 - zeros;
    }
    putWord(at, eightDigits(static_cast<std::uint32_t>(value), digits));
    return at + 8;
}

}  // namespace Valen::HexDigits
