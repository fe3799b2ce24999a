#include "Vl/Graphics/Pixels/Yuv.h"

#include <algorithm>

namespace Yuv {

namespace {

/// Thousandths of a channel in four times the 8-bit scale as the channel. What is below 0 is 0.
uint8_t channel(int value) {
    return static_cast<uint8_t>(std::clamp(value / 4000, 0, 255));
}

int coarse(int difference) {
    return difference & ~63;
}

}  // namespace

rgba toColour(YuvPixel pixel) {
    const int y = coarse(pixel.y() - YuvPixel::kBlack) * 1164;
    const int cr = coarse(2 * (pixel.cr() - YuvPixel::kGrey));
    const int cb = coarse(2 * (pixel.cb() - YuvPixel::kGrey));
    return rgba::of(channel(y + 1596 * cr), channel(y - 391 * cb - 813 * cr),
                    channel(y - 391 * cb + 2409 * cb),
                    static_cast<uint8_t>(pixel.level() * YuvPixel::kLevelCoverage));
}

YuvPixel blended(YuvPixel before, int64_t index, rgba colour) {
    const YuvPixel now = fromColourAt(index, colour);
    if (now.level() == 0) {
        return before;
    }
    if (before.level() == 0 || now.level() == YuvPixel::kOpaqueLevel) {
        return now.withFlagOf(before);
    }
    const int weight = ((kOpaque - colour.a()) * before.level() * YuvPixel::kLevelCoverage) >> 7;
    const auto mixed = [weight](int old, int fresh) { return (fresh * (128 - weight) + old * weight) / 128; };
    return YuvPixel::of(mixed(before.y(), now.y()), mixed(before.cb(), now.cb()),
                        mixed(before.cr(), now.cr()), std::max(before.level(), now.level()))
        .withFlagOf(before);
}

}  // namespace Yuv
