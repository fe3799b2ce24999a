#include "Vl/Graphics/Pixels/Rgb565.h"

#include <algorithm>
#include <cstring>

#include "Vl/Graphics/Pixels/CoverageMask.h"

namespace {

using Lanes = uint16_t __attribute__((vector_size(16)));
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
    return load<uint64_t>(window + Rgb565::kBlock - used);
}

/// Whether one of eight coverage bytes is above 128, where sixteen unsigned bits no longer hold the sums.
bool anyAboveOpaque(uint64_t bytes) {
    return ((((bytes & ~kHighBits) + ~kHighBits) & bytes) & kHighBits) != 0;
}

Lanes swapped(Lanes value) {
    if constexpr (std::endian::native == std::endian::big)
        return value;
    return value << 8 | value >> 8;
}

constexpr int mixed(int before, int weightBefore, int now) {
    return (before * weightBefore + now * (128 - weightBefore)) / 128;
}

}  // namespace

void Rgb565::blend(uint16_t& pixel, uint8_t& coverage, rgba colour) {
    const int before = panelOrder(pixel);
    const int weight = ((128 - colour.a()) * coverage) >> 7;
    const int red = mixed(before >> 11, weight, colour.r() >> 3) & 0x1f;
    const int green = mixed((before >> 5) & 0x3f, weight, colour.g() >> 2) & 0x3f;
    const int blue = mixed(before & 0x1f, weight, colour.b() >> 3) & 0x1f;
    pixel = panelOrder(static_cast<uint16_t>(red << 11 | green << 5 | blue));
    coverage = std::max(coverage, colour.a());
}

void Rgb565::blendEach(uint16_t* pixels, uint8_t* coverage, const uint8_t* levels, int used, rgba colour) {
    for (int i = 0; i < used; ++i) {
        if (levels[i] != 0)
            blend(pixels[i], coverage[i], colour.withAlpha(CoverageMask::scaled(colour.a(), levels[i])));
    }
}

void Rgb565::blendBlock(uint16_t* pixels, uint8_t* coverage, const uint8_t* levels, int used, rgba colour) {
    const uint64_t levelBytes = load<uint64_t>(levels) & firstBytes(used);
    if (levelBytes == 0)
        return;
    if (anyAboveOpaque(load<uint64_t>(coverage)))
        return blendEach(pixels, coverage, levels, used, colour);

    const Lanes level = __builtin_convertvector(std::bit_cast<Bytes>(levelBytes), Lanes);
    const Lanes covered = __builtin_convertvector(load<Bytes>(coverage), Lanes);
    const Lanes stored = load<Lanes>(pixels);
    const Lanes before = swapped(stored);

    const Lanes alpha = ((level + 1) * uint16_t{colour.a()}) >> 8;
    const Lanes weight = ((128 - alpha) * covered) >> 7;
    const Lanes rest = 128 - weight;
    const Lanes red = ((before >> 11) * weight + rest * static_cast<uint16_t>(colour.r() >> 3)) >> 7;
    const Lanes green = ((before >> 5 & 0x3f) * weight + rest * static_cast<uint16_t>(colour.g() >> 2)) >> 7;
    const Lanes blue = ((before & 0x1f) * weight + rest * static_cast<uint16_t>(colour.b() >> 3)) >> 7;

    // Level 0 must leave even a half-covered pixel alone, so those lanes are not merely blended with 0.
    const Lanes drawn = std::bit_cast<Lanes>(level != 0);
    const Lanes result = (swapped(red << 11 | green << 5 | blue) & drawn) | (stored & ~drawn);
    const Lanes larger = std::bit_cast<Lanes>(alpha > covered);
    const Bytes cover = __builtin_convertvector((alpha & larger) | (covered & ~larger), Bytes);
    std::memcpy(pixels, &result, sizeof result);
    std::memcpy(coverage, &cover, sizeof cover);
}
