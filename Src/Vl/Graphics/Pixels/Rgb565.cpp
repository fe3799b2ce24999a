#include "Vl/Graphics/Pixels/Rgb565.h"

#include <algorithm>
#include <cstring>

#include "Vl/Graphics/Pixels/CoverageMask.h"

namespace Rgb565 {

namespace {

using Unsigned = uint16_t __attribute__((vector_size(16)));
using Bytes = uint8_t __attribute__((vector_size(8)));

constexpr uint64_t kHighBits = 0x8080808080808080U;

template <typename To, typename From>
To load(const From* from) {
    To to;
    std::memcpy(&to, from, sizeof to);
    return to;
}

/// A word that keeps the first `used` of eight bytes in memory order.
uint64_t firstBytes(int used) {
    static constexpr uint8_t window[16] = {255, 255, 255, 255, 255, 255, 255, 255};
    return load<uint64_t>(window + 8 - used);
}

/// Whether one of eight coverage bytes is above 128, where the differences no longer fit their lanes.
bool anyAboveOpaque(uint64_t bytes) {
    return ((((bytes & ~kHighBits) + ~kHighBits) & bytes) & kHighBits) != 0;
}

/// Eight bytes as eight lanes. Interleaving with zeros is one instruction where a conversion is five.
Unsigned widened(uint64_t bytes) {
    if constexpr (std::endian::native == std::endian::big) {
        return __builtin_convertvector(std::bit_cast<Bytes>(bytes), Unsigned);
    }
    using Words = uint64_t __attribute__((vector_size(16)));
    using Sixteen = uint8_t __attribute__((vector_size(16)));
    const auto low = std::bit_cast<Sixteen>(Words{bytes, 0});
    return std::bit_cast<Unsigned>(
        __builtin_shufflevector(low, Sixteen{}, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
}

Unsigned swapped(Unsigned value) {
    if constexpr (std::endian::native == std::endian::big) {
        return value;
    }
    return value << 8 | value >> 8;
}

constexpr int mixed(int before, int weightBefore, int now) {
    return (before * weightBefore + now * (128 - weightBefore)) / 128;
}

template <typename Lanes>
Lanes all(int value) {
    return Lanes{} + static_cast<int16_t>(value);
}

}  // namespace

void blend(uint16_t& pixel, uint8_t& coverage, rgba colour) {
    const int before = panelOrder(pixel);
    const int weight = ((128 - colour.a()) * coverage) >> 7;
    const int red = mixed(before >> 11, weight, colour.r() >> 3) & 0x1f;
    const int green = mixed((before >> 5) & 0x3f, weight, colour.g() >> 2) & 0x3f;
    const int blue = mixed(before & 0x1f, weight, colour.b() >> 3) & 0x1f;
    pixel = panelOrder(static_cast<uint16_t>(red << 11 | green << 5 | blue));
    coverage = std::max(coverage, colour.a());
}

Brush::Brush(rgba colour)
    : red_(all<Lanes>(colour.r() >> 3)),
      green_(all<Lanes>(colour.g() >> 2)),
      blue_(all<Lanes>(colour.b() >> 3)),
      colour_(colour) {}

void Brush::blendRow(uint16_t* pixels, uint8_t* coverage, const uint8_t* levels, int width,
                     int64_t reachable) const {
    for (int column = 0; column < width; column += kBlock) {
        const int used = std::min(kBlock, width - column);
        if (column + kBlock <= reachable) {
            blendBlock(pixels + column, coverage + column, levels + column, used);
        } else {
            blendEach(pixels + column, coverage + column, levels + column, used);
        }
    }
}

void Brush::blendEach(uint16_t* pixels, uint8_t* coverage, const uint8_t* levels, int used) const {
    for (int i = 0; i < used; ++i) {
        if (levels[i] != 0) {
            blend(pixels[i], coverage[i], colour_.withAlpha(CoverageMask::scaled(colour_.a(), levels[i])));
        }
    }
}

inline void Brush::blendBlock(uint16_t* pixels, uint8_t* coverage, const uint8_t* levels, int used) const {
    const uint64_t levelBytes = load<uint64_t>(levels) & firstBytes(used);
    if (levelBytes == 0) {
        return;
    }
    const auto coverBytes = load<uint64_t>(coverage);
    if (anyAboveOpaque(coverBytes)) {
        return blendEach(pixels, coverage, levels, used);
    }

    const Unsigned level = widened(levelBytes);
    const Lanes covered = std::bit_cast<Lanes>(widened(coverBytes));
    const Unsigned stored = load<Unsigned>(pixels);
    const Unsigned before = swapped(stored);

    const Lanes alpha = std::bit_cast<Lanes>(((level + 1) * uint16_t{colour_.a()}) >> 8);
    const Lanes weight = ((128 - alpha) * covered) >> 7;
    // old · weight + new · (128 − weight) is 128 · new + (old − new) · weight, and its division by 128 exact
    // in the first term: one product instead of two.
    const Lanes red = red_ + (((std::bit_cast<Lanes>(before >> 11) - red_) * weight) >> 7);
    const Lanes green = green_ + (((std::bit_cast<Lanes>(before >> 5 & 0x3f) - green_) * weight) >> 7);
    const Lanes blue = blue_ + (((std::bit_cast<Lanes>(before & 0x1f) - blue_) * weight) >> 7);

    // Level 0 must leave even a half-covered pixel alone, so those lanes are not merely blended with 0.
    const Unsigned none = std::bit_cast<Unsigned>(level == 0);
    const Unsigned result = swapped(std::bit_cast<Unsigned>(red << 11 | green << 5 | blue));
    const Unsigned kept = (result & ~none) | (stored & none);
    const Bytes cover = __builtin_convertvector(alpha > covered ? alpha : covered, Bytes);
    std::memcpy(pixels, &kept, sizeof kept);
    std::memcpy(coverage, &cover, sizeof cover);
}

}  // namespace Rgb565
