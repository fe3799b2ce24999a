#include "Tools/boardsim/Board/HexText.h"

#include <string_view>

namespace boardsim {

std::string hexBytes(std::span<const std::byte> bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const std::byte byte : bytes) {
        const auto value = std::to_integer<std::size_t>(byte);
        text.append(" 0x").append(1, kDigits[value >> 4]).append(1, kDigits[value & 0xF]);
    }
    return text;
}

}  // namespace boardsim
