#include "Vl/Graphics/Images/PlacedImage.h"

#include <algorithm>
#include <span>

#include "Vl/Graphics/Pixels/Saturated.h"

namespace {

/// How far something of `size` reaches to the left of or above the position that it is aligned about.
template <typename Alignment>
int64_t reachBefore(Alignment alignment, int size) {
    switch (static_cast<int>(alignment)) {
        case 1:
            return size / 2;
        case 2:
            return size;
        default:
            return 0;
    }
}

/// An image's 0-255 on the 0-128 scale: alpha · 128 / 255, which is half of it but for 255.
constexpr uint8_t coverageOf(uint8_t alpha) {
    return static_cast<uint8_t>((alpha + (alpha == 255 ? 1 : 0)) >> 1);
}

template <int Channels>
void convert(const uint8_t* sample, std::span<rgba> colours) {
    constexpr bool grey = Channels < 3;
    constexpr bool hasAlpha = Channels % 2 == 0;
    for (rgba& colour : colours) {
        const uint8_t coverage = hasAlpha ? coverageOf(sample[Channels - 1]) : kOpaque;
        colour = rgba::of(sample[0], sample[grey ? 0 : 1], sample[grey ? 0 : 2], coverage);
        sample += Channels;
    }
}

constexpr decltype(&convert<1>) kConverters[] = {convert<1>, convert<2>, convert<3>, convert<4>};

}  // namespace

PlacedImage::PlacedImage(Bitmap& bitmap, int width, int height)
    : bitmap_(bitmap),
      width_(width),
      height_(height),
      left_(bitmap.getX() - reachBefore(bitmap.getPlacement().horizontal, width)),
      top_(bitmap.getY() - reachBefore(bitmap.getPlacement().vertical, height)) {
    bitmap_.setPosition(saturated(left_), saturated(top_));
    firstColumn_ = std::max<int64_t>(0, -left_);
    const int64_t end = std::min<int64_t>(width_, bitmap_.getWidth() - left_);
    colours_.resize(static_cast<size_t>(std::max<int64_t>(0, end - firstColumn_)));
}

// Meant: what lies left of or above the bitmap is dropped too; by index alone it would come out at the end of
// the row before.
void PlacedImage::drawRow(int row, const uint8_t* samples, int channels) {
    const int64_t line = top_ + row;
    if (colours_.empty() || line < 0 || line >= bitmap_.getHeight()) {
        return;
    }
    kConverters[channels - 1](samples + firstColumn_ * channels, colours_);
    bitmap_.getBuffer().setPixels(static_cast<int>(line * bitmap_.getWidth() + left_ + firstColumn_),
                                  colours_);
}

void PlacedImage::movePast() {
    const Bitmap::Placement& placement = bitmap_.getPlacement();
    int64_t right = left_;
    if (placement.horizontal == HorizontalAlignment::Start) {
        right += width_;
    }
    if (placement.horizontal == HorizontalAlignment::Centred) {
        right += width_ / 2;
    }
    bitmap_.setPosition(saturated(right), saturated(top_ + reachBefore(placement.vertical, height_)));
}
