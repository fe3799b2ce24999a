#include "Vl/Common/Strings/HexDump.h"

#include <algorithm>
#include <array>
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

/// How one byte is printed. Every text is stored, whatever its length, as one word of four characters.
using ByteText = std::array<char, 4>;
using ByteTexts = std::array<ByteText, 256>;

constexpr std::size_t kDigitsLength = 2;
constexpr std::size_t kDigitsAndBlankLength = 3;

constexpr ByteTexts makeByteTexts(const char* digits) {
    ByteTexts texts{};
    for (std::size_t byte = 0; byte < texts.size(); ++byte) {
        texts[byte] = {digits[byte / 16], digits[byte % 16], ' ', ' '};
    }
    return texts;
}

/// Printable characters of the middle of ASCII show themselves.
constexpr ByteTexts makeMixedTexts() {
    ByteTexts texts = makeByteTexts("0123456789abcdef");
    for (std::size_t byte = '0'; byte <= 'z'; ++byte) {
        texts[byte] = {'<', static_cast<char>(byte), ' ', ' '};
    }
    return texts;
}

constexpr ByteTexts kUpperCase = makeByteTexts("0123456789ABCDEF");
constexpr ByteTexts kMixed = makeMixedTexts();

/// What the fixed-size copy of a ByteText may write behind the text's own length.
constexpr std::size_t kSlack = sizeof(ByteText) - kDigitsLength;

Bytes bytesOf(const void* data, int size) {
    if (data == nullptr || size <= 0) {
        return {};
    }
    return {static_cast<const unsigned char*>(data), static_cast<std::size_t>(size)};
}

/// Writes the texts of all `bytes`, `length` characters each. @return the end.
char* put(char* at, Bytes bytes, const ByteTexts& texts, std::size_t length) {
    for (const unsigned char byte : bytes) {
        std::memcpy(at, texts[byte].data(), sizeof(ByteText));
        at += length;
    }
    return at;
}

/// Writes `value` in at least eight digits. @return the end.
char* putNumber(char* at, unsigned long value, const char* digits) {
    std::size_t length = 8;
    while (length < 2 * sizeof(value) && value >> (4 * length) != 0) {
        ++length;
    }
    for (std::size_t place = length; place-- > 0; value >>= 4) {
        at[place] = digits[value & 0xF];
    }
    return at + length;
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
            at = putNumber(at, addressOf(line), "0123456789ABCDEF");
            *at++ = ' ';
            *at++ = ' ';
        }
        at = put(at, line, kUpperCase, kDigitsAndBlankLength);
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
        at = putNumber(at, offset, "0123456789abcdef");
        for (Bytes line = takeLine(rest, kPerLine); !line.empty();) {
            *at++ = ' ';
            at = put(at, takeLine(line, kPerGroup), kMixed, kDigitsLength);
        }
        stream.write(text.data(), at - text.data());
    }
}

}  // namespace Valen
