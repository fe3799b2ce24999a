#pragma once

#include <cstdint>
#include <span>

#include "Vl/Graphics/Pixels/PixelStorage.h"

/// Pixels of the video overlay: one word each, laid out as YuvPixel says, converted as Yuv.h says.
/// Whatever is drawn, bit 31 of every word stays as it was.
class YUVPixelBuffer final : public PixelStorage<uint32_t> {
public:
    /// Blends, with the one chroma sample that the index carries (Cb even, Cr odd) and 0 for the other.
    /// Coverage below 16 (level 0) leaves the pixel alone; over a transparent pixel, and with level 4, the
    /// colour is taken whole. Else the old fields weigh ((128 − a) · old level · 32) >> 7 of 128 and the
    /// larger level stays. Alpha above 128 gives a defined but meaningless pixel.
    void setPixel(int index, rgba colour) override;

    /// Stores both chroma samples in every pixel and the level even when it is 0. That this differs from
    /// setPixel is meant.
    void fillRect(int start, int gap, int width, int height, rgba colour) override;

    /// The colour in coarse steps (see Yuv::toColour), opaque as 128. Only the pixel's own chroma samples
    /// count, so one that was drawn alone does not read back as the colour it was drawn in.
    rgba getPixel(int index) const override;

    void resize(int width, int height) override;

    ~YUVPixelBuffer() override;

    void setPixels(int start, std::span<const rgba> colours) override;
};
