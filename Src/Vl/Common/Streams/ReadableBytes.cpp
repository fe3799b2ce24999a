#include "Vl/Common/Streams/ReadableBytes.h"

#include <algorithm>
#include <climits>
#include <sstream>

#include "Vl/Common/Strings/HexDump.h"

namespace Valen {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

// Not isprint(3): what is printable does not depend on the locale.
constexpr bool isPrintable(unsigned char byte) {
    return byte >= ' ' && byte <= '~';
}

}  // namespace

std::string readableBytes(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        if (!isPrintable(byte)) {
            text += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 0xF]};
        } else if (character == '\\') {
            text += "\\\\";
        } else {
            text += character;
        }
    }
    return text;
}

std::string hexDump(std::string_view bytes) {
    std::stringstream text;
    toHexString(text, bytes.data(), static_cast<int>(std::min<std::size_t>(bytes.size(), INT_MAX)));
    return text.str();
}

}  // namespace Valen
