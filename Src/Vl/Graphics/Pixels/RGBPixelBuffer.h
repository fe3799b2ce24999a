#pragma once

#include <cstdint>
#include <memory>

#include "Vl/Graphics/Pixels/PixelStorage.h"

/// Pixels as the OLED panel takes them: 16-bit RGB 5-6-5, red in the top five bits, most significant byte
/// first whatever the processor, with one byte of coverage (0-128) per pixel kept aside.
class RGBPixelBuffer final : public PixelStorage<uint16_t> {
public:
    /// Blends: the old colour weighs ((128 − a) · old coverage) >> 7 of 128, and the larger coverage stays.
    /// An untouched pixel therefore takes the new colour whole, whatever its alpha, and an opaque pixel
    /// keeps its colour under alpha 0. Alpha above 128 gives a defined but meaningless colour.
    void setPixel(int index, rgba colour) override;

    /// Stores colour and coverage as they are; the coverage is not the larger of old and new.
    void fillRect(int start, int gap, int width, int height, rgba colour) override;

    /// The low bits that 5-6-5 does not keep are 0. Coverage of 128 and above reads as 255, all else as 0:
    /// that opaque reads 255 and not 128 is meant.
    rgba getPixel(int index) const override;

    void resize(int width, int height) override;

    ~RGBPixelBuffer() override;

    void blendMask(int start, int gap, const CoverageMask& mask, rgba colour) override;

    void setPixels(int start, std::span<const rgba> colours) override;

    /// Reverses the order of all pixels in place, which turns the picture by 180 degrees.
    void rotate();

    /// The coverage bytes in index order; null while the buffer is empty.
    uint8_t* alpha() { return alpha_.get(); }
    const uint8_t* alpha() const { return alpha_.get(); }

private:
    std::unique_ptr<uint8_t[]> alpha_;
};
