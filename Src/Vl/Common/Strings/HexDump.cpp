#include "Vl/Common/Strings/HexDump.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <span>

#include "Vl/Common/Strings/HexDigits.h"
#include "Vl/Common/Strings/TextEditing.h"

namespace Valen {

namespace {

using namespace HexDigits;

constexpr char kTwoDigits[] = "%02X ";
constexpr int kDefaultPerLine = 16;
constexpr std::size_t kLineBuffer = 5000;  // with the terminator
constexpr std::size_t kMostAddressLength = 2 * sizeof(unsigned long) + 2;

Bytes bytesOf(const void* data, int size) {
    if (data == nullptr || size <= 0) {
        return {};
    }
    return {static_cast<const unsigned char*>(data), static_cast<std::size_t>(size)};
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
