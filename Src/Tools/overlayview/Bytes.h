#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace overlayview {

/// Bytes that belong to somebody else; most often a whole file in memory.
using Bytes = std::span<const std::byte>;

constexpr std::size_t kWordBytes = 4;

/// The byte at `index`, zero behind the end: a file that was cut reads as blank.
inline std::uint8_t byteAt(Bytes bytes, std::size_t index) {
    return index < bytes.size() ? std::to_integer<std::uint8_t>(bytes[index]) : std::uint8_t{0};
}

/// `count` bytes from `index` on as one big-endian number, zeros behind the end. `count` is at most 8.
inline std::uint64_t bigEndian(Bytes bytes, std::size_t index, std::size_t count) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        value = value << 8 | byteAt(bytes, index + i);
    }
    return value;
}

/// The big-endian 32-bit word at byte `index`.
inline std::uint32_t wordAt(Bytes bytes, std::size_t index) {
    return static_cast<std::uint32_t>(bigEndian(bytes, index, kWordBytes));
}

}  // namespace overlayview
