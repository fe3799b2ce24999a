#pragma once

#include <bit>
#include <cstdint>
#include <span>

// The overlay's files keep every value most significant byte first. These are their own inverses.

constexpr uint32_t bigEndian(uint32_t value) {
    return std::endian::native == std::endian::big ? value : __builtin_bswap32(value);
}

constexpr uint64_t bigEndian(uint64_t value) {
    return std::endian::native == std::endian::big ? value : __builtin_bswap64(value);
}

/// The bytes of values in the order in which they lie in memory.
template <typename Values>
std::span<const uint8_t> bytesOf(const Values& values) {
    return {reinterpret_cast<const uint8_t*>(std::data(values)),
            std::size(values) * sizeof *std::data(values)};
}
