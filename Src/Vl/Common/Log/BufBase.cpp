#include "Vl/Common/Log/BufBase.h"

#include <algorithm>
#include <charconv>

namespace Valen::Log {
namespace {

char toUpper(char digit) {
    return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit;
}

}  // namespace

char* BufBase::put(char* at, const char* text) {
    while (*text != '\0' && at < last()) {
        *at++ = *text++;
    }
    *at = '\0';
    return at;
}

char* BufBase::putUInt64(char* at, std::uint64_t value, int flags) {
    return putNumber(at, false, value, flags);
}

char* BufBase::putULong(char* at, unsigned long value, int flags) {
    return putNumber(at, false, value, flags);
}

char* BufBase::putInt64(char* at, std::int64_t value, int flags) {
    const auto bits = static_cast<std::uint64_t>(value);
    // Negated without a sign: the most negative number has no positive counterpart.
    return putNumber(at, value < 0, value < 0 ? 0 - bits : bits, flags);
}

char* BufBase::putLong(char* at, long value, int flags) {
    return putInt64(at, value, flags);
}

BufBase::Processed BufBase::process(ProcessParam at, const char* format) {
    while (*format != '\0' && at < last()) {
        if (format[0] == '%' && format[1] == '?') {
            *at = '\0';
            return {format + 2, at};
        }
        if (format[0] == '%' && format[1] == '%') {
            ++format;
        }
        *at++ = *format++;
    }
    *at = '\0';
    return {nullptr, at};
}

char* BufBase::fill(char* at, std::size_t count, char character) {
    return std::fill_n(at, std::min(count, room(at)), character);
}

char* BufBase::putNumber(char* at, bool isNegative, std::uint64_t magnitude, int flags) {
    std::array<char, 20> digits;  // what the largest number needs in decimal
    const int base = (flags & Hexadecimal) != 0 ? 16 : 10;
    char* const end = std::to_chars(digits.begin(), digits.end(), magnitude, base).ptr;
    if ((flags & UpperCase) != 0) {
        std::transform(digits.begin(), end, digits.begin(), toUpper);
    }
    const auto count = static_cast<std::size_t>(end - digits.begin());
    const std::size_t sign = isNegative ? 1 : 0;
    const auto width = static_cast<std::size_t>(flags & WidthMask);
    const std::size_t missing = width > sign + count ? width - sign - count : 0;
    const bool isZeroFilled = (flags & ZeroFill) != 0;
    at = fill(at, isZeroFilled ? 0 : missing, ' ');
    at = fill(at, sign, '-');
    at = fill(at, isZeroFilled ? missing : 0, '0');
    at = std::copy_n(digits.begin(), std::min(count, room(at)), at);
    *at = '\0';
    return at;
}

}  // namespace Valen::Log
