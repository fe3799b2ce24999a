#include "Vl/Graphics/Pixels/PixelBuffer.h"

#include "Vl/Graphics/Pixels/Saturated.h"

void PixelBuffer::blendMask(int start, int gap, const CoverageMask& mask, rgba colour) {
    const int64_t stride = int64_t{mask.width} + gap;
    for (int row = 0; row < mask.height; ++row) {
        const uint8_t* levels = mask.row(row);
        for (int column = 0; column < mask.width; ++column) {
            if (levels[column] == 0) {
                continue;
            }
            setPixel(saturated(start + row * stride + column),
                     colour.withAlpha(CoverageMask::scaled(colour.a(), levels[column])));
        }
    }
}

void PixelBuffer::setPixels(int start, std::span<const rgba> colours) {
    int64_t index = start;
    for (const rgba colour : colours) {
        setPixel(saturated(index++), colour);
    }
}
