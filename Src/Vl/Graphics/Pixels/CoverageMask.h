#pragma once

#include <cstdint>

/// A borrowed rectangle of 8-bit coverage, 0 (nothing) to 255 (all), such as a rendered glyph.
/// The memory belongs to someone else and must outlive the call that the mask is handed to.
struct CoverageMask {
    const uint8_t* data = nullptr;  ///< the top-left value
    int pitch = 0;                  ///< from one row to the next, in bytes
    int readable = 0;               ///< bytes that may be read at the start of each row, at least `width`
    int width = 0;
    int height = 0;

    const uint8_t* row(int index) const { return data + int64_t{index} * pitch; }

    /// How strongly `level` of coverage lets a colour of coverage `alpha` through. 255 keeps `alpha` whole.
    static constexpr uint8_t scaled(uint8_t alpha, uint8_t level) {
        return static_cast<uint8_t>((alpha * (1 + level)) >> 8);
    }
};
