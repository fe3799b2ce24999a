#include "Tools/boardsim/Models/TextAttribute.h"

#include <charconv>

namespace boardsim {

bool readNumber(std::string_view text, long& number) {
    if (text.ends_with('\n')) {
        text.remove_suffix(1);
    }
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) {
        text.remove_prefix(2);
    }
    unsigned value = 0;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, value, hexadecimal ? 16 : 10);
    if (error != std::errc{} || end != last) {
        return false;
    }
    number = negative ? -static_cast<long>(value) : static_cast<long>(value);
    return true;
}

}  // namespace boardsim
