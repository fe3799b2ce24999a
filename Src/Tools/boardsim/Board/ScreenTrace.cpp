#include "Tools/boardsim/Board/ScreenTrace.h"

#include <array>
#include <string_view>

namespace boardsim {
namespace {

std::string hexBytes(std::span<const std::byte> bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const std::byte byte : bytes) {
        const auto value = std::to_integer<std::size_t>(byte);
        text.append(" 0x").append(1, kDigits[value >> 4]).append(1, kDigits[value & 0xF]);
    }
    return text;
}

std::string sizeOf(std::span<const std::byte> bytes) {
    return " " + std::to_string(bytes.size()) + (bytes.size() == 1 ? " byte" : " bytes");
}

std::string describeRefusal(const ScreenEvent& event) {
    const std::string what = event.bytes.empty() ? " a read" : sizeOf(event.bytes);
    return "screen refused" + what + " at " + std::to_string(event.offset) + ": " +
           std::make_error_code(event.error).message();
}

}  // namespace

std::string describe(const ScreenEvent& event) {
    const std::string place = " at " + std::to_string(event.offset);
    switch (event.kind) {
        case ScreenEvent::Kind::Frame:
            return "screen frame" + sizeOf(event.bytes) + place;
        case ScreenEvent::Kind::Piece:
            return "screen piece" + sizeOf(event.bytes) + place;
        case ScreenEvent::Kind::State:
            return "screen state" + hexBytes(event.bytes) + place;
        case ScreenEvent::Kind::Read:
            return "screen read" + hexBytes(event.bytes) + place;
        case ScreenEvent::Kind::Refused:
            return describeRefusal(event);
    }
    return {};
}

}  // namespace boardsim
