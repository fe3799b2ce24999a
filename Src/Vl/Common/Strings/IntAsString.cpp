#include "Vl/Common/Strings/IntAsString.h"

#include <cstdlib>

#include "Vl/Common/Strings/TextEditing.h"

namespace Valen {

namespace {

constexpr char kDigits[] = "0123456789abcdef";
constexpr std::size_t kMostCharacters = 33;  // the sign and 32 binary digits

/// @return the end of the number's text.
char* write(char* first, int value, int base) {
    char* at = first;
    // The smallest integer has no positive counterpart, so each remainder is made positive instead.
    int rest = value;
    do {
        *at++ = kDigits[std::abs(rest % base)];
        rest /= base;
    } while (rest != 0);
    if (value < 0) {
        *at++ = '-';
    }
    str_rev(first, at - 1);
    return at;
}

}  // namespace

IntAsString::IntAsString(int value) {
    *write(characters_.data(), value, 10) = '\0';
}

std::string IntAsString::itoa(int value, int base) {
    if (base < 2 || base > 16) {
        return {};
    }
    std::array<char, kMostCharacters> text;
    return {text.data(), write(text.data(), value, base)};
}

}  // namespace Valen
