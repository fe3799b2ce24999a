#include "Vl/Common/Strings/HexDump.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>

#include "Vl/Common/Strings/TextEditing.h"

namespace Valen {

namespace {

using Bytes = std::span<const unsigned char>;

constexpr char kTwoDigits[] = "%02X ";
constexpr int kDefaultPerLine = 16;
constexpr std::size_t kLineBuffer = 5000;  // with the terminator
constexpr std::size_t kMostAddressLength = 2 * sizeof(unsigned long) + 2;

/// How each byte is printed: two or three characters, the first in the lowest bits, zeros behind the last.
using ByteTexts = std::array<std::uint32_t, 256>;

constexpr std::size_t kDigitsLength = 2;
constexpr std::size_t kDigitsAndBlankLength = 3;

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

constexpr ByteTexts kUpperCase = makeByteTexts("0123456789ABCDEF");
constexpr ByteTexts kUpperCaseAndBlank = makeByteTexts("0123456789ABCDEF", ' ');
constexpr ByteTexts kLowerCase = makeByteTexts("0123456789abcdef");

/// Bytes from '0' to 'z' show the character itself.
constexpr ByteTexts makeMixedTexts() {
    ByteTexts texts = kLowerCase;
    for (std::size_t byte = '0'; byte <= 'z'; ++byte) {
        texts[byte] = word('<', static_cast<char>(byte));
    }
    return texts;
}

constexpr ByteTexts kMixed = makeMixedTexts();

/// Characters are written eight at a time, and this many of them lie behind the text's end at most.
constexpr std::size_t kSlack = sizeof(std::uint64_t) - kDigitsLength;

static_assert(std::endian::native == std::endian::little);

Bytes bytesOf(const void* data, int size) {
    if (data == nullptr || size <= 0) {
        return {};
    }
    return {static_cast<const unsigned char*>(data), static_cast<std::size_t>(size)};
}

void putWord(char* at, std::uint64_t characters) {
    std::memcpy(at, &characters, sizeof(characters));
}

/// Writes the texts of all `bytes`, `length` characters each. @return the end.
char* put(char* at, Bytes bytes, const ByteTexts& texts, std::size_t length) {
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

std::uint64_t eightDigits(std::uint32_t value, const ByteTexts& digits) {
    std::uint64_t characters = 0;
    for (int byte = 0; byte < 4; ++byte) {
        characters = characters << 16 | digits[value & 0xFF];
        value >>= 8;
    }
    return characters;
}

/// Writes `value` in at least eight digits. @return the end.
char* putNumber(char* at, std::uint64_t value, const ByteTexts& digits) {
    const auto high = static_cast<std::uint32_t>(value >> 32);
    if (high != 0) {
        const int zeros = std::countl_zero(high) / 4;
        putWord(at, eightDigits(high, digits) >> (8 * zeros));
        at += 8 - zeros;
    }
    putWord(at, eightDigits(static_cast<std::uint32_t>(value), digits));
    return at + 8;
}

unsigned long addressOf(Bytes line) {
    return reinterpret_cast<unsigned long>(line.data());
}

Bytes takeLine(Bytes& rest, std::size_t perLine) {
    const Bytes line = rest.first(std::min(perLine, rest.size()));
    rest = rest.subspan(line.size());
    return line;
}

/// Lines of two digits and a blank, none longer than the line buffer.
std::string dumpTwoDigits(Bytes rest, bool withoutAddress, std::size_t perLine) {
    const std::size_t lines = (rest.size() + perLine - 1) / perLine;
    std::string out(rest.size() * kDigitsAndBlankLength + lines * (kMostAddressLength + 1) + kSlack, '\0');
    char* at = out.data();
    while (!rest.empty()) {
        const Bytes line = takeLine(rest, perLine);
        if (!withoutAddress) {
            at = putNumber(at, addressOf(line), kUpperCase);
            *at++ = ' ';
            *at++ = ' ';
        }
        at = put(at, line, kUpperCaseAndBlank, kDigitsAndBlankLength);
        *at++ = '\n';
    }
    out.resize(static_cast<std::size_t>(at - out.data()));
    return out;
}

/// One line in any format, cut where the line buffer ends.
std::string formatLine(Bytes line, bool withoutAddress, const char* byteFormat) {
    std::array<char, kLineBuffer> buffer;
    std::size_t used = 0;
    if (!withoutAddress) {
        used =
            static_cast<std::size_t>(std::snprintf(buffer.data(), buffer.size(), "%08lX  ", addressOf(line)));
    }
    for (const unsigned char byte : line) {
        const int length = std::snprintf(buffer.data() + used, buffer.size() - used, byteFormat, byte);
        // A format that fails prints nothing.
        used += static_cast<std::size_t>(std::max(length, 0));
        if (used >= buffer.size() - 1) {
            used = buffer.size() - 1;
            break;
        }
    }
    return {buffer.data(), used};
}

std::string dumpFormatted(Bytes rest, bool withoutAddress, std::size_t perLine, const char* byteFormat) {
    std::string out;
    while (!rest.empty()) {
        out += formatLine(takeLine(rest, perLine), withoutAddress, byteFormat);
        out += '\n';
    }
    return out;
}

}  // namespace

void BinaryToXXXString(const void* data, int size, std::string& out, bool withoutAddress,
                       bool /*padLastLine: trimmed away again, which is meant*/, int perLine,
                       const char* byteFormat) {
    if (perLine <= 0) {
        out.clear();
        return;
    }
    const Bytes bytes = bytesOf(data, size);
    const auto lineBytes = static_cast<std::size_t>(perLine);
    const std::size_t longestLine =
        std::min(lineBytes, bytes.size()) * kDigitsAndBlankLength + kMostAddressLength;
    const bool twoDigits = std::strcmp(byteFormat, kTwoDigits) == 0 && longestLine < kLineBuffer;
    out = twoDigits ? dumpTwoDigits(bytes, withoutAddress, lineBytes)
                    : dumpFormatted(bytes, withoutAddress, lineBytes, byteFormat);
    TrimWhiteSpaces(out);
}

void BinaryToHexString(const void* data, int size, std::string& out, bool withoutAddress, bool padLastLine,
                       int perLine) {
    BinaryToXXXString(data, size, out, withoutAddress, padLastLine, perLine, kTwoDigits);
}

void BinaryToHexString(const void* data, int size, std::string& out) {
    BinaryToHexString(data, size, out, false, true, kDefaultPerLine);
}

std::string BinaryToHexSimple(const void* data, int size) {
    const Bytes bytes = bytesOf(data, size);
    std::string out(bytes.size() * kDigitsLength + kSlack, '\0');
    put(out.data(), bytes, kUpperCase, kDigitsLength);
    out.resize(bytes.size() * kDigitsLength);
    return out;
}

void toHexString(std::stringstream& stream, const void* data, int size) {
    constexpr std::size_t kPerLine = 32;
    constexpr std::size_t kPerGroup = 4;
    constexpr std::size_t kLineLength = 8 + kPerLine * kDigitsLength + kPerLine / kPerGroup + 1;

    const Bytes bytes = bytesOf(data, size);
    Bytes rest = bytes;
    while (!rest.empty()) {
        std::array<char, kLineLength + kSlack> text;
        char* at = text.data();
        const std::size_t offset = bytes.size() - rest.size();
        if (offset != 0) {
            *at++ = '\n';
        }
        at = putNumber(at, offset, kLowerCase);
        for (Bytes line = takeLine(rest, kPerLine); !line.empty();) {
            *at++ = ' ';
            at = put(at, takeLine(line, kPerGroup), kMixed, kDigitsLength);
        }
        stream.write(text.data(), at - text.data());
    }
}

}  // namespace Valen
