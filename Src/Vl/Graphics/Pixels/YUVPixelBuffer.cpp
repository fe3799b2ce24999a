#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

#include "Vl/Graphics/Pixels/Yuv.h"
#include "Vl/Graphics/Pixels/YuvRow.h"

YUVPixelBuffer::~YUVPixelBuffer() = default;

void YUVPixelBuffer::setPixel(int index, rgba colour) {
    if (contains(index)) {
        pixels()[index] = Yuv::blended({pixels()[index]}, index, colour).word;
    }
}

void YUVPixelBuffer::setPixels(int start, std::span<const rgba> colours) {
    const auto [first, inside] = clipped(start, colours);
    YuvRow::blend(pixels() + first, first, inside);
}

rgba YUVPixelBuffer::getPixel(int index) const {
    return contains(index) ? Yuv::toColour({pixels()[index]}) : rgba(0);
}

void YUVPixelBuffer::fillRect(int start, int gap, int width, int height, rgba colour) {
    const YuvPixel pixel = Yuv::fromColour(colour);
    forEachSpan(start, gap, width, height,
                [&](int64_t first, int64_t length) { YuvRow::fill(pixels() + first, length, pixel); });
}

void YUVPixelBuffer::resize(int width, int height) {
    const int wanted = countOf(width, height);
    adopt(zeroes<uint32_t>(wanted), wanted);
}
