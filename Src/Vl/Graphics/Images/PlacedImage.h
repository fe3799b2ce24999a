#pragma once

#include <cstdint>
#include <vector>

#include "Vl/Graphics/Pixels/Bitmap.h"

/// An image of known size on its way onto a bitmap: placed about the bitmap's drawing position by its
/// alignments, cut at the bitmap's edges and blended a row at a time. Borrows the bitmap, which must outlive
/// it and not be resized meanwhile. Not thread-safe.
class PlacedImage {
public:
    /// Moves the drawing position by the alignments to where the image's top-left pixel lies, which may be
    /// outside the bitmap: Centred by half the size (rounded down), End and Bottom by all of it.
    PlacedImage(Bitmap& bitmap, int width, int height);

    /// Blends row `row` of the image, 0 at the top. `samples` are its width × `channels` bytes: 1 grey,
    /// 2 grey and alpha, 3 RGB, 4 RGBA; without alpha, opaque. Pixels outside the bitmap are dropped.
    void drawRow(int row, const uint8_t* samples, int channels);

    /// Moves the drawing position past the image: Start by its width, Centred by half of it, End not at all;
    /// Top not at all, Centred by half its height, Bottom by its height.
    void movePast();

private:
    Bitmap& bitmap_;
    const int width_;
    const int height_;
    int64_t left_;
    int64_t top_;
    int64_t firstColumn_ = 0;      ///< of the image, the leftmost that is on the bitmap
    std::vector<rgba> colours_{};  ///< of one row, as many as are on the bitmap
};
