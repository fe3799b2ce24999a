#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace Enums {

/// Reads a machine word from any address, at compile time too.
template <typename Word>
constexpr Word wordAt(const char* from) {
    std::array<char, sizeof(Word)> bytes{};
    std::copy_n(from, bytes.size(), bytes.begin());
    return std::bit_cast<Word>(bytes);
}

/// Hashes a short text by its length and its ends, eight bytes each at most; the words of one enumeration
/// differ there. The same machine gives the same hash at compile time and at run time, others may differ.
/// Reads exactly text[0] to text[length - 1].
constexpr std::uint32_t textHash(const char* text, std::size_t length) {
    constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15U;  // spreads every bit into the upper half
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    if (length >= sizeof(std::uint64_t)) {
        head = wordAt<std::uint64_t>(text);
        tail = wordAt<std::uint64_t>(text + length - sizeof(std::uint64_t));
    } else if (length >= sizeof(std::uint32_t)) {
        head = wordAt<std::uint32_t>(text);
        tail = wordAt<std::uint32_t>(text + length - sizeof(std::uint32_t));
    } else if (length > 0) {
        head = wordAt<std::uint8_t>(text);
        tail = wordAt<std::uint8_t>(text + length / 2) * 256U + wordAt<std::uint8_t>(text + length - 1);
    }
    const std::uint64_t mixed = (head ^ std::rotl(tail, 29)) + length;
    return static_cast<std::uint32_t>((mixed * kGoldenRatio) >> 32);
}

}  // namespace Enums
