#pragma once

#include <cstddef>
#include <cstring>
#include <string>

namespace Valen {

// Comparisons of zero-terminated texts, which are never null. Any thread may use them.

inline bool IsEqual(const char* a, const char* b) {
    return std::strcmp(a, b) == 0;
}

/// Compares the first `n` characters at most, as strncmp(3) does.
inline bool IsEqual(const char* a, const char* b, std::size_t n) {
    return std::strncmp(a, b, n) == 0;
}

/// Every text contains the empty one.
inline bool Contains(const char* haystack, const char* needle) {
    return std::strstr(haystack, needle) != nullptr;
}
inline bool Contains(const std::string& haystack, const std::string& needle) {
    return haystack.find(needle) != std::string::npos;
}

/// Every text begins with the empty one.
inline bool BeginsWith(const char* text, const char* prefix) {
    return std::strncmp(text, prefix, std::strlen(prefix)) == 0;
}

/// Every text ends with the empty one.
inline bool EndsWith(const char* text, const char* suffix) {
    const std::size_t length = std::strlen(text);
    const std::size_t suffixLength = std::strlen(suffix);
    return suffixLength <= length && std::strcmp(text + length - suffixLength, suffix) == 0;
}

}  // namespace Valen
