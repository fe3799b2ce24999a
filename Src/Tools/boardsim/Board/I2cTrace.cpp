#include "Tools/boardsim/Board/I2cTrace.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

namespace boardsim {
namespace {

constexpr std::size_t kShown = 16;

std::string hex(unsigned byte) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "0x%02x", byte);
    return text.data();
}

std::string describe(const I2cMessage& message, bool isRefused) {
    std::string text = message.direction == I2cDirection::Write ? "write" : "read";
    // What a refused read left in its place never was on the bus.
    const std::size_t count = isRefused && message.direction == I2cDirection::Read ? 0 : message.bytes.size();
    for (std::size_t i = 0; i < std::min(count, kShown); ++i) {
        text += " " + hex(message.bytes[i]);
    }
    if (count > kShown) {
        text += " … " + std::to_string(count - kShown) + " more";
    }
    return text;
}

}  // namespace

std::string describe(const std::string& bus, const I2cEvent& event) {
    std::string text = bus;
    std::optional<std::uint8_t> address;
    for (std::size_t i = 0; i < event.messages.size(); ++i) {
        const I2cMessage& message = event.messages[i];
        text += i == 0 ? " " : ", ";
        if (address != message.address) {
            text += hex(message.address) + " ";
            address = message.address;
        }
        const bool isLast = i + 1 == event.messages.size();
        text += describe(message, isLast && event.error != std::errc{});
    }
    if (event.error != std::errc{}) {
        text += ": " + std::make_error_code(event.error).message();
    }
    return text;
}

}  // namespace boardsim
