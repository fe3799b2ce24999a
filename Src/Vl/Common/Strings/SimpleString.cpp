#include "Vl/Common/Strings/SimpleString.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace Valen {

namespace {

constexpr char kOutOfMemory[] = "out of memory";

/// Null for sizes that the capacity cannot express.
char* allocate(std::size_t bytes) {
    if (bytes > INT_MAX) {
        return nullptr;
    }
    return static_cast<char*>(std::malloc(std::max<std::size_t>(bytes, 1)));
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

char* SimpleString::assign(const char* text) {
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
    // Somebody else's text that already ends there may be a literal.
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

void SimpleString::own(char* block, std::size_t capacity) {
    freeme();
    if (block == nullptr) {
        fail();
        return;
    }
    str_ = block;
    capacity_ = static_cast<int>(capacity);
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

void SimpleString::NoCopyBuffer::Free::operator()(char* block) const {
    std::free(block);
}

}  // namespace Valen
