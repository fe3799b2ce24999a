#include "Tools/boardinfo/ValueText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cinttypes>
#include <cstdio>

namespace boardinfo {
namespace {

/// How many bytes the UTF-8 sequence at the beginning of `text` has; 0 when there is none that is a
/// character.
std::size_t sequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned first = byte(0);
    const std::size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (length == 0 || first > 0xF4 || length > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            return 0;
        }
    }
    // Overlong forms, surrogates, and what lies behind the last code point.
    const unsigned second = length > 1 ? byte(1) : 0;
    const bool wrong = (first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ||
                       (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F);
    return wrong ? 0 : length;
}

bool isControl(std::string_view sequence) {
    const auto first = static_cast<unsigned char>(sequence[0]);
    return first < 0x20 || first == 0x7F || (first == 0xC2 && static_cast<unsigned char>(sequence[1]) < 0xA0);
}

template <typename Number>
std::string shortest(Number number) {
    std::array<char, 32> text;
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

std::string textOf(bool value) {
    return value ? "yes" : "no";
}
std::string textOf(std::int64_t value) {
    return shortest(value);
}
std::string textOf(double value) {
    return shortest(value);
}
std::string textOf(const std::string& value) {
    return printable(value);
}
std::string textOf(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values) {
        text += (text.empty() ? "" : " ") + printable(value);
    }
    return text.empty() ? "none" : text;
}

}  // namespace

std::string valueText(const Value& value, const std::string& unit) {
    std::string text = std::visit([](const auto& plain) { return textOf(plain); }, value);
    return unit.empty() ? text : text + " " + unit;
}

std::string printable(std::string_view text) {
    std::string clean;
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        clean += length == 0 || isControl(text) ? "?" : text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return clean;
}

std::size_t columns(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::string hexText(std::uint64_t number, int digits) {
    std::array<char, 32> text;
    std::snprintf(text.data(), text.size(), "0x%0*" PRIX64, digits, number);
    return text.data();
}

}  // namespace boardinfo
