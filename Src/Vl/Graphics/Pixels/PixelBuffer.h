#pragma once

#include <span>

#include "Vl/Graphics/Pixels/CoverageMask.h"
#include "Vl/Graphics/Pixels/Rgba.h"

/// A store of pixels, addressed by a linear index (row × width + column); it knows no width of its own,
/// the bitmap above it does the two-dimensional arithmetic.
///
/// Rectangles are given as `start`, the index of their first pixel, and `gap`, the number of pixels
/// between the end of one row and the start of the next (bitmap width − rectangle width).
/// No operation reads or writes outside the buffer, whatever its arguments. Not thread-safe.
class PixelBuffer {
public:
    PixelBuffer() = default;
    PixelBuffer(const PixelBuffer&) = delete;
    PixelBuffer& operator=(const PixelBuffer&) = delete;

    /// Blends one pixel. An index outside the buffer is ignored.
    virtual void setPixel(int index, rgba colour) = 0;

    /// Overwrites `height` rows of `width` pixels without blending. Writes nothing when either is zero or
    /// negative; rows that leave the buffer are cut, and a rectangle that starts outside is not drawn.
    virtual void fillRect(int start, int gap, int width, int height, rgba colour) = 0;

    /// The colour of one pixel; 0 outside the buffer.
    virtual rgba getPixel(int index) const = 0;

    /// Throws the contents away and makes width × height clear pixels. Nonsense (zero, negative, more
    /// than INT_MAX bytes of colour) leaves an empty buffer. Throws std::bad_alloc when memory is short; the
    /// buffer is then as it was.
    virtual void resize(int width, int height) = 0;

    virtual ~PixelBuffer() = default;

    /// Blends a rectangle of coverage in one colour: every value other than 0 does what `setPixel` does
    /// with the colour's coverage replaced by CoverageMask::scaled. Values of 0 leave their pixel alone.
    virtual void blendMask(int start, int gap, const CoverageMask& mask, rgba colour);

    /// Blends a row of pixels: does what `setPixel` does for each of `colours`, the first at index `start`.
    /// Those that fall outside the buffer are ignored. The colours must not lie in the buffer itself.
    virtual void setPixels(int start, std::span<const rgba> colours);
};
