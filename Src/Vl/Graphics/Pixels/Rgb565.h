#pragma once

#include <bit>
#include <cstdint>
#include <span>

#include "Vl/Graphics/Pixels/Rgba.h"

/// The arithmetic on panel pixels: 16-bit 5-6-5 in the panel's byte order plus a coverage byte.
namespace Rgb565 {

/// Most significant byte first in memory. Its own inverse.
constexpr uint16_t panelOrder(uint16_t value) {
    if constexpr (std::endian::native == std::endian::big) {
        return value;
    }
    return static_cast<uint16_t>(value << 8 | value >> 8);
}

/// The panel pixel of a colour; its coverage is dropped.
constexpr uint16_t fromColour(rgba colour) {
    return panelOrder(
        static_cast<uint16_t>((colour.r() >> 3) << 11 | (colour.g() >> 2) << 5 | colour.b() >> 3));
}

/// Blends `colour` into one pixel as RGBPixelBuffer::setPixel promises.
void blend(uint16_t& pixel, uint8_t& coverage, rgba colour);

/// Blends one colour each into as many pixels as there are colours, as RGBPixelBuffer::setPixel promises.
/// Neither array may overlap the colours.
void blendRow(uint16_t* pixels, uint8_t* coverage, std::span<const rgba> colours);

/// Eight 16-bit numbers that are worked on at once.
using Lanes = int16_t __attribute__((vector_size(16)));

/// The channels of eight colours in 5, 6 and 5 bits.
struct Channels {
    Lanes red, green, blue;
};

/// A colour of at most 128 coverage, laid out for blending rows of coverage eight pixels at a time.
class Brush {
public:
    explicit Brush(rgba colour);

    /// Blends `width` levels into as many pixels; a level of 0 leaves its pixel alone. Up to `reachable`
    /// elements, at least `width`, may be read at each of the three pointers; those past `width` may be
    /// written too, with the value they had.
    void blendRow(uint16_t* pixels, uint8_t* coverage, const uint8_t* levels, int width,
                  int64_t reachable) const;

private:
    void blendBlock(uint16_t* pixels, uint8_t* coverage, const uint8_t* levels, int used) const;
    void blendEach(uint16_t* pixels, uint8_t* coverage, const uint8_t* levels, int used) const;

    Channels channels_;
    rgba colour_;
};

}  // namespace Rgb565
