#include "Vl/Common/Strings/Unicode.h"

#include <span>

namespace Valen {

namespace {

constexpr char16_t kByteOrderMark = 0xFEFF;

std::span<const unsigned char> bytesOf(const unsigned char* data, long length) {
    if (data == nullptr || length <= 0) {
        return {};
    }
    return {data, static_cast<std::size_t>(length)};
}

}  // namespace

std::string ascii2utf8(const unsigned char* text, int length) {
    std::string utf8;
    for (const unsigned char character : bytesOf(text, length)) {
        if (character < 0x80) {
            utf8 += static_cast<char>(character);
        } else {
            utf8 += static_cast<char>(0xC0 | character >> 6);
            utf8 += static_cast<char>(0x80 | (character & 0x3F));
        }
    }
    return utf8;
}

std::u16string utf16lebuffer_to_u16_platform_string(const unsigned char* buffer, long bytes) {
    const std::span<const unsigned char> units = bytesOf(buffer, bytes);
    std::u16string text;
    text.reserve(units.size() / 2);
    for (std::size_t low = 0; low + 1 < units.size(); low += 2) {
        text += static_cast<char16_t>(units[low] | units[low + 1] << 8);
    }
    if (text.starts_with(kByteOrderMark)) {
        text.erase(0, 1);
    }
    return text;
}

}  // namespace Valen
