#pragma once

#include <cstdint>
#include <optional>

/// Where one character's pixel rows lie in a font file, which is a picture of many characters side by side.
struct FontCell {
    int64_t rowBytes;  ///< of one character's pixel row
    int64_t charactersPerRow;
    int64_t column;    ///< the character's place among them
    int64_t firstRow;  ///< the pixel row of the whole font in which the character begins

    /// The file offset, counted from `start`, of the character's pixel row; nothing when 64 bits do not hold
    /// it.
    std::optional<int64_t> offsetOf(int64_t row, int64_t start) const {
        int64_t offset;
        if (__builtin_mul_overflow(firstRow + row, charactersPerRow, &offset) ||
            __builtin_add_overflow(offset, column, &offset) ||
            __builtin_mul_overflow(offset, rowBytes, &offset) ||
            __builtin_add_overflow(offset, start, &offset)) {
            return std::nullopt;
        }
        return offset;
    }
};
