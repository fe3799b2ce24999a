// What a temperature sensor's file answers, of any content: a number or none. The peer reads digits itself.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Fuzz/Require.h"
#include "Vl/HAL/Board/Thermals.h"

namespace {

/// The decimal number at the beginning, behind blanks and a sign; nothing where there is none or it does not
/// fit.
std::optional<int> plainNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    std::optional<std::int64_t> number;
    for (const char character : text) {
        if (character < '0' || character > '9') {
            break;
        }
        // Beyond any int it makes no difference how far.
        number = std::min<std::int64_t>(number.value_or(0) * 10 + (character - '0'), 1'000'000'000'000);
    }
    if (!number) {
        return std::nullopt;
    }
    const std::int64_t value = isNegative ? -*number : *number;
    return value == static_cast<int>(value) ? std::optional(static_cast<int>(value)) : std::nullopt;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    require(Valen::parseTemperature(text) == plainNumber(text));
    return 0;
}
