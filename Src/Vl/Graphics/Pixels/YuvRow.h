#pragma once

#include <cstdint>
#include <span>

#include "Vl/Graphics/Pixels/Rgba.h"
#include "Vl/Graphics/Pixels/YuvPixel.h"

/// Rows of overlay pixels, several at a time; the results are those of Yuv.h to the bit.
namespace YuvRow {

/// Draws one colour on each of as many pixels as there are colours, the first of which has the index `index`:
/// only its being even or odd matters. Pixels and colours must not overlap.
void blend(uint32_t* pixels, int64_t index, std::span<const rgba> colours);

/// Overwrites all fields of `length` pixels but their flags.
void fill(uint32_t* pixels, int64_t length, YuvPixel pixel);

}  // namespace YuvRow
