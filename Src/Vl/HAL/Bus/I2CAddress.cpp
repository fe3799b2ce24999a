#include "Vl/HAL/Bus/I2CAddress.h"

#include <charconv>
#include <system_error>

namespace Valen {
namespace {

/// Reads the number with which `text` begins, if there is one.
bool readNumber(std::string_view text, int base, std::uint32_t& number) {
    return std::from_chars(text.data(), text.data() + text.size(), number, base).ec == std::errc();
}

}  // namespace

void I2CAddress::parse(std::string_view text) {
    if (!readNumber(text, 10, bus)) {
        return;
    }
    const std::size_t hyphen = text.find('-');
    if (hyphen == std::string_view::npos || !readNumber(text.substr(hyphen + 1), 16, address)) {
        return;
    }
    name[text.copy(name, kNameSize - 1)] = '\0';
}

}  // namespace Valen
