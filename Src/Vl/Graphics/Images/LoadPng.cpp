#include <algorithm>

#include "Vl/Graphics/Images/PngReader.h"
#include "Vl/Graphics/Pixels/Bitmap.h"
#include "Vl/Graphics/Pixels/Saturated.h"

namespace {

/// Coverage on the 0-128 scale from a PNG's 0-255.
uint8_t coverageOf(uint8_t alpha) {
    return static_cast<uint8_t>(alpha * kOpaque / 255);
}

rgba colourOf(const uint8_t* pixel, int channels) {
    const bool grey = channels < 3;
    const bool hasAlpha = channels % 2 == 0;
    const uint8_t coverage = hasAlpha ? coverageOf(pixel[channels - 1]) : kOpaque;
    return rgba::of(pixel[0], pixel[grey ? 0 : 1], pixel[grey ? 0 : 2], coverage);
}

/// Blends the part of the image that falls on the bitmap, its top-left pixel at (left, top). Meant: what lies
/// left of or above the bitmap is dropped too; by index alone it would come out at the end of the row before.
void draw(const PngReader& image, int left, int top, const Bitmap& bitmap) {
    PixelBuffer& buffer = bitmap.getBuffer();
    const int64_t lastRow = std::min<int64_t>(image.height(), int64_t{bitmap.getHeight()} - top);
    const int64_t lastColumn = std::min<int64_t>(image.width(), int64_t{bitmap.getWidth()} - left);
    for (int64_t row = std::max<int64_t>(0, -int64_t{top}); row < lastRow; ++row) {
        for (int64_t column = std::max<int64_t>(0, -int64_t{left}); column < lastColumn; ++column) {
            const int64_t offset = (row * image.width() + column) * image.channels();
            buffer.setPixel(static_cast<int>((top + row) * bitmap.getWidth() + left + column),
                            colourOf(image.pixels().data() + offset, image.channels()));
        }
    }
}

}  // namespace

int Bitmap::loadpng(const char* path, bool resizeToImage) {
    PngReader image;
    if (const auto result = image.readHeader(path); result != PngReader::Ok) {
        return result;
    }
    if (const auto result = image.readImage(); result != PngReader::Ok) {
        return result;
    }
    if (resizeToImage) {
        resize(image.width(), image.height());
    }

    int64_t x = placement_.x;
    int64_t y = placement_.y;
    if (placement_.horizontal == HorizontalAlignment::Centred) {
        x -= image.width() / 2;
    }
    if (placement_.horizontal == HorizontalAlignment::End) {
        x -= image.width();
    }
    if (placement_.vertical == VerticalAlignment::Centred) {
        y -= image.height() / 2;
    }
    if (placement_.vertical == VerticalAlignment::Bottom) {
        y -= image.height();
    }
    setPosition(saturated(x), saturated(y));
    draw(image, getX(), getY(), *this);

    if (placement_.horizontal == HorizontalAlignment::Start) {
        x += image.width();
    }
    if (placement_.horizontal == HorizontalAlignment::Centred) {
        x += image.width() / 2;
    }
    if (placement_.vertical == VerticalAlignment::Centred) {
        y += image.height() / 2;
    }
    if (placement_.vertical == VerticalAlignment::Bottom) {
        y += image.height();
    }
    setPosition(saturated(x), saturated(y));
    return PngReader::Ok;
}
