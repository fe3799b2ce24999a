#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

#include <utility>

#include "Vl/Graphics/Pixels/Yuv.h"

YUVPixelBuffer::~YUVPixelBuffer() = default;

void YUVPixelBuffer::setPixel(int index, rgba colour) {
    if (contains(index)) {
        pixels()[index] = Yuv::blended({pixels()[index]}, index, colour).word;
    }
}

void YUVPixelBuffer::setPixels(int start, std::span<const rgba> colours) {
    const auto [first, skipped, length] = clipped(start, colours.size());
    for (int64_t i = 0; i < length; ++i) {
        setPixel(static_cast<int>(first + i), colours[static_cast<size_t>(skipped + i)]);
    }
}

rgba YUVPixelBuffer::getPixel(int index) const {
    return contains(index) ? Yuv::toColour({pixels()[index]}) : rgba(0);
}

void YUVPixelBuffer::fillRect(int start, int gap, int width, int height, rgba colour) {
    const YuvPixel pixel = Yuv::fromColour(colour);
    forEachSpan(start, gap, width, height, [&](int64_t first, int64_t length) {
        for (int64_t i = first; i < first + length; ++i) {
            pixels()[i] = pixel.withFlagOf({pixels()[i]}).word;
        }
    });
}

void YUVPixelBuffer::resize(int width, int height) {
    const int wanted = countOf(width, height);
    adopt(zeroes<uint32_t>(wanted), wanted);
}
