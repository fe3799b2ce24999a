#include "Vl/Common/Strings/SimpleString.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace Valen {

namespace {

constexpr char kOutOfMemory[] = "out of memory";

const char* orEmpty(const char* text) {
    return text != nullptr ? text : "";
}

/// Null for sizes that the capacity cannot express.
char* allocate(std::size_t bytes) {
    if (bytes > INT_MAX) {
        return nullptr;
    }
    return static_cast<char*>(std::malloc(std::max<std::size_t>(bytes, 1)));
}

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
    if (length >= INT_MAX) {
        return {kOutOfMemory, false};
    }

    SimpleString::NoCopyBuffer joined(static_cast<int>(length) + 1);
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

SimpleString::SimpleString() : SimpleString(1) {}

SimpleString::SimpleString(int size) {
    const auto bytes = static_cast<std::size_t>(size);
    own(allocate(bytes), bytes);
    if (hasMemoryAllocated()) {
        *str_ = '\0';
    }
}

SimpleString::SimpleString(const char* text) : SimpleString(text, true) {}

SimpleString::SimpleString(const char* text, bool copy) {
    if (copy) {
        assign(text);
    } else {
        str_ = const_cast<char*>(orEmpty(text));
    }
}

SimpleString::SimpleString(NoCopyBuffer&& buffer) {
    if (buffer.isValid()) {
        str_ = buffer.release();
        capacity_ = static_cast<int>(std::strlen(str_));
    } else {
        fail();
    }
}

SimpleString::SimpleString(SimpleString&& other) noexcept
    : str_(std::exchange(other.str_, nullptr)), capacity_(std::exchange(other.capacity_, kNotOwned)) {}

SimpleString::~SimpleString() {
    freeme();
}

SimpleString& SimpleString::operator=(SimpleString&& other) noexcept {
    if (this != &other) {
        freeme();
        str_ = std::exchange(other.str_, nullptr);
        capacity_ = std::exchange(other.capacity_, kNotOwned);
    }
    return *this;
}

SimpleString& SimpleString::operator=(const char* text) {
    assign(text);
    return *this;
}

const char* SimpleString::assign(const char* text) {
    text = orEmpty(text);
    const std::size_t needed = std::strlen(text) + 1;
    if (hasMemoryAllocated() && needed <= static_cast<std::size_t>(capacity_)) {
        std::memmove(str_, text, needed);
        return str_;
    }
    char* block = allocate(needed);
    if (block != nullptr) {
        std::memcpy(block, text, needed);
    }
    own(block, needed);
    return str_;
}

SimpleString& SimpleString::operator+=(const char* text) {
    text = orEmpty(text);
    const std::size_t oldLength = length();
    const std::size_t addedLength = std::strlen(text);
    const std::size_t needed = oldLength + addedLength + 1;
    if (hasMemoryAllocated() && needed <= static_cast<std::size_t>(capacity_)) {
        std::memmove(str_ + oldLength, text, addedLength);
        str_[needed - 1] = '\0';
        return *this;
    }
    char* block = allocate(needed);
    if (block != nullptr) {
        std::memcpy(block, this->text(), oldLength);
        std::memcpy(block + oldLength, text, addedLength + 1);
    }
    own(block, needed);
    return *this;
}

const char* SimpleString::append(const char* text) {
    return ReFormat("%s%s", this->text(), orEmpty(text));
}

const char* SimpleString::ReFormat(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    ReFormat(format, arguments);
    va_end(arguments);
    return str_;
}

const char* SimpleString::ReFormat(const char* format, va_list arguments) {
    *this = FormatWith_va_list(format, arguments);
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
    return NoCopyBuffer(format, arguments);
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

std::size_t SimpleString::length() const {
    return std::strlen(text());
}

int SimpleString::find(char character) const {
    return indexOf(std::strchr(text(), character));
}

int SimpleString::rfind(char character) const {
    return indexOf(std::strrchr(text(), character));
}

int SimpleString::find(const char* part) const {
    return indexOf(std::strstr(text(), orEmpty(part)));
}

bool SimpleString::endsWith(const char* tail) const {
    tail = orEmpty(tail);
    const std::size_t ownLength = length();
    const std::size_t tailLength = std::strlen(tail);
    return tailLength <= ownLength && std::strcmp(text() + ownLength - tailLength, tail) == 0;
}

void SimpleString::erase(std::size_t position) {
    // Texts of others that already end there may be literals.
    if (str_ != nullptr && str_ != kOutOfMemory && str_[position] != '\0') {
        str_[position] = '\0';
    }
}

int SimpleString::freeme() {
    if (hasMemoryAllocated()) {
        std::free(str_);
        str_ = nullptr;
        capacity_ = kNotOwned;
    }
    return -1;
}

int SimpleString::compare(const char* other) const {
    return std::strcmp(text(), orEmpty(other));
}

int SimpleString::indexOf(const char* place) const {
    return place != nullptr ? static_cast<int>(place - text()) : -1;
}

void SimpleString::own(char* block, std::size_t bytes) {
    freeme();
    if (block == nullptr) {
        fail();
        return;
    }
    str_ = block;
    capacity_ = static_cast<int>(bytes);
}

void SimpleString::fail() {
    str_ = const_cast<char*>(kOutOfMemory);
    capacity_ = kNotOwned;
}

SimpleString::NoCopyBuffer::NoCopyBuffer(int size) : block_(allocate(static_cast<std::size_t>(size))) {
    // Adopted unwritten, it is an empty text.
    if (isValid()) {
        *block_ = '\0';
    }
}

SimpleString::NoCopyBuffer::NoCopyBuffer(const char* format, va_list arguments) {
    char* formatted = nullptr;
    if (vasprintf(&formatted, format, arguments) >= 0) {
        block_.reset(formatted);
    }
}

void SimpleString::NoCopyBuffer::Free::operator()(char* block) const {
    std::free(block);
}

}  // namespace Valen
