#pragma once

#include "Vl/Graphics/Pixels/Rgba.h"
#include "Vl/Graphics/Pixels/YuvPixel.h"

/// The arithmetic on overlay pixels: 10-bit video levels of BT.601 in integers. Divisions truncate toward
/// zero.
namespace Yuv {

/// (257·r + 504·g + 98·b) / 250 + 64, from 64 (black) to 940 (white).
constexpr int luma(rgba colour) {
    return (257 * colour.r() + 504 * colour.g() + 98 * colour.b()) / 250 + YuvPixel::kBlack;
}

/// Cb: (−148·r − 291·g + 439·b) / 500 + 256, from 33 to 479.
constexpr int blueChroma(rgba colour) {
    return (-148 * colour.r() - 291 * colour.g() + 439 * colour.b()) / 500 + YuvPixel::kGrey;
}

/// Cr: (439·r − 368·g − 71·b) / 500 + 256, from 33 to 479.
constexpr int redChroma(rgba colour) {
    return (439 * colour.r() - 368 * colour.g() - 71 * colour.b()) / 500 + YuvPixel::kGrey;
}

/// Coverage in steps of 32, rounded: 0-15 is 0, 112-143 is 4 (opaque). Only three bits are kept, so 240 and
/// more come out as 0.
constexpr int level(rgba colour) {
    return (colour.a() + 16) >> 5 & 7;
}

/// The colour with both chroma samples; flag clear.
constexpr YuvPixel fromColour(rgba colour) {
    return YuvPixel::of(luma(colour), blueChroma(colour), redChroma(colour), level(colour));
}

/// The colour with the one chroma sample that a pixel at `index` carries, the other 0; flag clear.
constexpr YuvPixel fromColourAt(int64_t index, rgba colour) {
    const bool even = index % 2 == 0;
    return YuvPixel::of(luma(colour), even ? blueChroma(colour) : 0, even ? 0 : redChroma(colour),
                        level(colour));
}

/// The colour of a pixel by its own two chroma samples; a partner is not looked at. Each difference from
/// black and from grey is first rounded down to a multiple of 64: that the step is so coarse is meant.
/// The coverage is 32 a level, so opaque is 128.
rgba toColour(YuvPixel pixel);

/// The pixel at `index` after `colour` was drawn on it, as YUVPixelBuffer::setPixel promises.
YuvPixel blended(YuvPixel before, int64_t index, rgba colour);

}  // namespace Yuv
