#include "Tools/boardsim/Board/Json/Codec.h"

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>

#include "Tools/boardsim/Board/Fault.h"

namespace boardsim {
namespace {

constexpr double kSixteenths = 16;

std::string hexNumber(std::uint64_t value, int digits) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "0x%0*" PRIx64, digits, value);
    return text.data();
}

std::string shown(std::uint64_t value, const NumberForm& form) {
    return form.hexDigits > 0 ? hexNumber(value, 1) : std::to_string(value);
}

std::optional<std::uint64_t> unsignedAt(const JsonPlace& place) {
    if (const auto* const value = std::get_if<std::uint64_t>(&place.value().value)) {
        return *value;
    }
    if (const auto* const digits = std::get_if<std::string>(&place.value().value)) {
        return wholeNumber(*digits);
    }
    return std::nullopt;
}

/// NaN when it is no number at all.
double realAt(const JsonPlace& place) {
    const auto& value = place.value().value;
    if (const auto* const real = std::get_if<double>(&value)) {
        return *real;
    }
    if (const auto* const negative = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*negative);
    }
    if (const auto* const whole = std::get_if<std::uint64_t>(&value)) {
        return static_cast<double>(*whole);
    }
    return std::nan("");
}

std::string textAt(const JsonPlace& place, std::size_t longest) {
    const auto* const text = std::get_if<std::string>(&place.value().value);
    if (text == nullptr || text->empty() || text->size() > longest) {
        place.refuse("want a text of 1 to " + std::to_string(longest) + " bytes");
    }
    const auto isControl = [](char character) {
        return static_cast<unsigned char>(character) < ' ' || character == '\x7F';
    };
    if (std::any_of(text->begin(), text->end(), isControl)) {
        place.refuse("want a text without control characters");
    }
    return *text;
}

std::string bytesAt(const JsonPlace& place, std::size_t most) {
    const auto* const digits = std::get_if<std::string>(&place.value().value);
    std::string bytes;
    if (digits != nullptr && digits->size() % 2 == 0 && digits->size() / 2 <= most) {
        for (std::size_t i = 0; i < digits->size(); i += 2) {
            const std::optional<std::uint64_t> byte = wholeNumber("0x" + digits->substr(i, 2));
            if (!byte) {
                break;
            }
            bytes += static_cast<char>(*byte);
        }
    }
    if (digits == nullptr || bytes.size() * 2 != digits->size()) {
        place.refuse("want at most " + std::to_string(most) + " bytes as pairs of hexadecimal digits");
    }
    return bytes;
}

template <typename Bytes>
JsonValue writeBytes(const Bytes& bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const auto each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        text.append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 0xF]);
    }
    return {text};
}

}  // namespace

std::uint64_t readNumberAt(const JsonPlace& place, const NumberForm& form) {
    const std::optional<std::uint64_t> number = unsignedAt(place);
    if (!number || *number < form.least || *number > form.most) {
        place.refuse("want a number from " + shown(form.least, form) + " to " + shown(form.most, form));
    }
    return *number;
}

JsonValue writeNumber(std::uint64_t value, const NumberForm& form) {
    return form.hexDigits > 0 ? JsonValue{hexNumber(value, form.hexDigits)} : JsonValue{value};
}

Codec<bool> truth() {
    return {[](const JsonPlace& place) {
                const auto* const value = std::get_if<bool>(&place.value().value);
                if (value == nullptr) {
                    place.refuse("want true or false");
                }
                return *value;
            },
            [](const bool& value) { return JsonValue{value}; }};
}

Codec<std::int32_t> integer(std::int32_t least, std::int32_t most) {
    return {[=](const JsonPlace& place) {
                const double value = realAt(place);
                // Of what is no number every comparison is false.
                if (!(value >= least && value <= most && value == std::trunc(value))) {
                    place.refuse("want a whole number from " + std::to_string(least) + " to " +
                                 std::to_string(most));
                }
                return static_cast<std::int32_t>(value);
            },
            [](const std::int32_t& value) {
                return value < 0 ? JsonValue{std::int64_t{value}}
                                 : JsonValue{static_cast<std::uint64_t>(value)};
            }};
}

Codec<std::int32_t> sixteenths(std::int32_t least, std::int32_t most) {
    return {[=](const JsonPlace& place) {
                const double value = realAt(place) * kSixteenths;
                if (!(value >= least && value <= most && value == std::trunc(value))) {
                    place.refuse("want sixteenths from " + printJson({least / kSixteenths}) + " to " +
                                 printJson({most / kSixteenths}));
                }
                return static_cast<std::int32_t>(value);
            },
            [](const std::int32_t& value) { return JsonValue{value / kSixteenths}; }};
}

Codec<std::string> text(std::size_t longest) {
    return {[longest](const JsonPlace& place) { return textAt(place, longest); },
            [](const std::string& value) { return JsonValue{value}; }};
}

Codec<std::string> fileName(std::size_t longest) {
    return {[longest](const JsonPlace& place) {
                std::string name = textAt(place, longest);
                if (name == "." || name == ".." || name.find('/') != std::string::npos) {
                    place.refuse("want what can be the name of a file");
                }
                return name;
            },
            [](const std::string& value) { return JsonValue{value}; }};
}

Codec<std::vector<std::uint8_t>> hexBytes(std::size_t most) {
    return {[most](const JsonPlace& place) {
                const std::string bytes = bytesAt(place, most);
                return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
            },
            [](const std::vector<std::uint8_t>& bytes) { return writeBytes(bytes); }};
}

Codec<std::string> hexText(std::size_t most) {
    return {[most](const JsonPlace& place) { return bytesAt(place, most); },
            [](const std::string& bytes) { return writeBytes(bytes); }};
}

}  // namespace boardsim
