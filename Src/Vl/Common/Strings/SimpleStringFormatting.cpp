#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>

#include "Vl/Common/Strings/SimpleString.h"

namespace Valen {

namespace {

/// Joins the texts from `first` to the null pointer.
SimpleString join(bool trailingDelimiter, char delimiter, const char* first, va_list others) {
    const std::size_t delimiterLength = delimiter == '\0' ? 0 : 1;
    std::size_t length = 0;
    va_list measured;
    va_copy(measured, others);
    for (const char* text = first; text != nullptr; text = va_arg(measured, const char*)) {
        length += std::strlen(text) + delimiterLength;
    }
    va_end(measured);

    SimpleString::NoCopyBuffer joined(length < INT_MAX ? static_cast<int>(length) + 1 : -1);
    if (!joined.isValid()) {
        return joined;
    }
    char* end = joined.get();
    for (const char* text = first; text != nullptr; text = va_arg(others, const char*)) {
        end = stpcpy(end, text);
        std::fill_n(end, delimiterLength, delimiter);
        end += delimiterLength;
    }
    if (!trailingDelimiter && end != joined.get()) {
        end -= delimiterLength;
    }
    *end = '\0';
    return joined;
}

}  // namespace

char* SimpleString::append(const char* text) {
    return ReFormat("%s%s", this->text(), orEmpty(text));
}

char* SimpleString::ReFormat(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    reformat(format, arguments);
    va_end(arguments);
    return str_;
}

char* SimpleString::reformat(const char* format, va_list arguments) {
    char* formatted = nullptr;
    const int length = vasprintf(&formatted, format, arguments);
    // Only now is the old text freed: the arguments may be parts of it.
    own(length >= 0 ? formatted : nullptr, static_cast<std::size_t>(length));
    return str_;
}

SimpleString SimpleString::FormatWithParams(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    SimpleString formatted = FormatWith_va_list(format, arguments);
    va_end(arguments);
    return formatted;
}

SimpleString SimpleString::FormatWith_va_list(const char* format, va_list arguments) {
    SimpleString formatted("", false);
    formatted.reformat(format, arguments);
    return formatted;
}

SimpleString SimpleString::concatStrings(const char* first, ...) {
    va_list others;
    va_start(others, first);
    SimpleString joined = join(false, '\0', first, others);
    va_end(others);
    return joined;
}

SimpleString SimpleString::concatStringsWithDelim(bool trailingDelimiter, char delimiter, const char* first,
                                                  ...) {
    va_list others;
    va_start(others, first);
    SimpleString joined = join(trailingDelimiter, delimiter, first, others);
    va_end(others);
    return joined;
}

SimpleString::NoCopyBuffer::NoCopyBuffer(const char* format, va_list arguments) {
    char* formatted = nullptr;
    if (vasprintf(&formatted, format, arguments) >= 0) {
        block_.reset(formatted);
    }
}

}  // namespace Valen
