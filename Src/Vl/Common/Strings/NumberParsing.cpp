#include "Vl/Common/Strings/NumberParsing.h"

#include <cstdlib>
#include <cstring>

namespace Valen {

namespace {

constexpr int kAnyCharacter = -1;

[[noreturn]] void reject() {
    throw 0;
}

/// A number and where it ends.
template <typename Number>
struct Parsed {
    Number value;
    const char* end;
};

template <typename Number>
Parsed<Number> parse(Number (&convert)(const char*, char**, int), const char* text, int base) {
    // The library says nothing about the end when it refuses the base.
    if (base < 0 || base == 1 || base > 36) {
        return {0, text};
    }
    char* end = nullptr;
    const Number value = convert(text, &end, base);
    return {value, end};
}

template <typename Number>
std::pair<bool, Number> parseWhole(Number (&convert)(const char*, char**, int), const char* text, int base) {
    const Parsed<Number> number = parse(convert, text, base);
    if (number.end == text) {
        return {false, 0};
    }
    return {true, number.value};
}

}  // namespace

std::pair<bool, long> stringToLong(const char* text, int base) {
    return parseWhole(std::strtol, text, base);
}

std::pair<bool, unsigned long> stringToULong(const char* text) {
    return parseWhole(std::strtoul, text, 0);
}

long stringToLong(const char** cursor, int terminator, int base) {
    const Parsed<long> number = parse(std::strtol, *cursor, base);
    if (number.end == *cursor) {
        reject();
    }
    if (terminator != kAnyCharacter && *number.end != static_cast<char>(terminator)) {
        reject();
    }
    *cursor = number.end + 1;
    return number.value;
}

int CmpPartialString(const char** cursor, const char* expected) {
    const std::size_t length = std::strlen(expected);
    if (std::strncmp(*cursor, expected, length) != 0) {
        reject();
    }
    *cursor += length;
    return 0;
}

}  // namespace Valen
