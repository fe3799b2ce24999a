#include "Vl/Graphics/Images/PlacedImage.h"

#include <algorithm>
#include <bit>
#include <cstring>
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

/// Four colours at a time.
using Words = uint32_t __attribute__((vector_size(16)));
constexpr size_t kInWords = sizeof(Words) / sizeof(uint32_t);
constexpr bool kRedIsFirstInMemory = std::endian::native == std::endian::little;

/// Alpha brought from 0-255 to 0-128: alpha · 128 / 255, which is half of it but for 255. For one word and
/// for several.
template <typename Word>
Word withCoverage(Word word) {
    const Word alpha = word >> 24;
    return (word & 0x00ffffffU) | ((alpha + ((alpha + 1) >> 8)) >> 1) << 24;
}

rgba withCoverageOf(rgba colour) {
    return withCoverage(colour.value);
}

void convertGrey(const uint8_t* sample, std::span<rgba> colours) {
    for (rgba& colour : colours) {
        colour = rgba::of(*sample, *sample, *sample, kOpaque);
        ++sample;
    }
}

void convertGreyAlpha(const uint8_t* sample, std::span<rgba> colours) {
    for (rgba& colour : colours) {
        colour = withCoverageOf(rgba::of(sample[0], sample[0], sample[0], sample[1]));
        sample += 2;
    }
}

void convertRgb(const uint8_t* sample, std::span<rgba> colours) {
    for (rgba& colour : colours) {
        colour = rgba::of(sample[0], sample[1], sample[2], kOpaque);
        sample += 3;
    }
}

void convertRgba(const uint8_t* sample, std::span<rgba> colours) {
    while (kRedIsFirstInMemory && colours.size() >= kInWords) {
        Words words;
        std::memcpy(&words, sample, sizeof words);
        words = withCoverage(words);
        std::memcpy(static_cast<void*>(colours.data()), &words, sizeof words);
        colours = colours.subspan(kInWords);
        sample += sizeof words;
    }
    for (rgba& colour : colours) {
        colour = withCoverageOf(rgba::of(sample[0], sample[1], sample[2], sample[3]));
        sample += 4;
    }
}

/// By the number of channels less one.
constexpr decltype(&convertGrey) kConverters[] = {convertGrey, convertGreyAlpha, convertRgb, convertRgba};

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
