#pragma once

#include <bit>
#include <cstdint>

#include "Vl/Graphics/Pixels/Rgba.h"

/// The arithmetic on panel pixels: 16-bit 5-6-5 in the panel's byte order plus a coverage byte.
namespace Rgb565 {

/// Most significant byte first in memory. Its own inverse.
constexpr uint16_t panelOrder(uint16_t value) {
    if constexpr (std::endian::native == std::endian::big)
        return value;
    return static_cast<uint16_t>(value << 8 | value >> 8);
}

/// The panel pixel of a colour; its coverage is dropped.
constexpr uint16_t fromColour(rgba colour) {
    return panelOrder(
        static_cast<uint16_t>((colour.r() >> 3) << 11 | (colour.g() >> 2) << 5 | colour.b() >> 3));
}

/// Blends `colour` into one pixel as RGBPixelBuffer::setPixel promises.
void blend(uint16_t& pixel, uint8_t& coverage, rgba colour);

/// Pixels that blendBlock works on at a time.
inline constexpr int kBlock = 8;

/// Blends kBlock pixels in one step. Reads kBlock values at each of the three pointers; only the first
/// `used` levels (1 to kBlock) count, all other pixels keep their value. `colour.a()` is at most 128.
void blendBlock(uint16_t* pixels, uint8_t* coverage, const uint8_t* levels, int used, rgba colour);

/// The same for `used` pixels one by one, reading no further and for any alpha.
void blendEach(uint16_t* pixels, uint8_t* coverage, const uint8_t* levels, int used, rgba colour);

}  // namespace Rgb565
