#pragma once

#include <concepts>
#include <string>

#include "Vl/Common/Log/BufBase.h"

/// A message built from a format and arguments that know their types, for code that avoids printf:
///
///     BufBase message;
///     format(message, "read %? of %?: %?", count, size, name);
///
/// Nothing is allocated and nothing throws. Arguments are integers (bool is 0 or 1), single characters, texts
/// (zero-terminated, not null; std::string) and a Number; others do not compile.
namespace Valen::Log {

/// An integer that is written in a given way: Number(port, BufBase::Hexadecimal | BufBase::ZeroFill | 4).
template <std::integral Value>
class Number {
public:
    Number(Value value, int flags) : value_(value), flags_(flags) {}

    char* putInto(BufBase& buffer, char* at) const {
        if constexpr (std::signed_integral<Value>) {
            return buffer.putInt64(at, value_, flags_);
        } else {
            return buffer.putUInt64(at, value_, flags_);
        }
    }

private:
    Value value_;
    int flags_;
};

/// One put for every type of argument.
inline char* putArgument(BufBase& buffer, char* at, const char* text) {
    return buffer.put(at, text);
}
inline char* putArgument(BufBase& buffer, char* at, const std::string& text) {
    return buffer.put(at, text.c_str());
}
/// A template for char, too: a function would take whatever converts to one, such as a double or an enum.
template <std::integral Value>
char* putArgument(BufBase& buffer, char* at, Value value) {
    if constexpr (std::same_as<Value, char>) {
        const char text[] = {value, '\0'};
        return buffer.put(at, text);
    } else {
        return Number(value, 0).putInto(buffer, at);
    }
}
template <std::integral Value>
char* putArgument(BufBase& buffer, char* at, const Number<Value>& number) {
    return number.putInto(buffer, at);
}

/// Writes `text` from the beginning of `buffer`, with each placeholder "%?" replaced by the next argument;
/// "%%" is one '%'. Placeholders without an argument stay as they are, arguments without a placeholder are
/// left out.
/// @return the position behind the last character.
template <typename... Arguments>
char* format(BufBase& buffer, const char* text, const Arguments&... arguments) {
    BufBase::Processed rest = buffer.process(buffer.begin(), text);
    const auto replacePlaceholder = [&](const auto& argument) {
        if (rest.format != nullptr) {
            rest = buffer.process(putArgument(buffer, rest.at, argument), rest.format);
        }
    };
    (replacePlaceholder(arguments), ...);
    while (rest.format != nullptr) {
        replacePlaceholder("%?");
    }
    return rest.at;
}

}  // namespace Valen::Log
