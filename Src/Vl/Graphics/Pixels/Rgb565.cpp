#include "Vl/Graphics/Pixels/Rgb565.h"

#include <algorithm>
#include <cstring>

#include "Vl/Graphics/Pixels/CoverageMask.h"

namespace Rgb565 {

namespace {

using Unsigned = uint16_t __attribute__((vector_size(16)));
using Bytes = uint8_t __attribute__((vector_size(8)));

constexpr int kBlock = 8;
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

bool anyNegative(Lanes lanes) {
    using Two = uint64_t __attribute__((vector_size(16)));
    const Two two = std::bit_cast<Two>(lanes >> 15);
    return (two[0] | two[1]) != 0;
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

template <int first>
Unsigned everySecond(Unsigned a, Unsigned b) {
    return __builtin_shufflevector(a, b, first, first + 2, first + 4, first + 6, first + 8, first + 10,
                                   first + 12, first + 14);
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

Lanes all(int value) {
    return Lanes{} + static_cast<int16_t>(value);
}

/// Eight stored pixels of coverage `covered` once `colour` was drawn on them, neither above 128.
///
/// old · weight + new · (128 − weight) is 128 · new + (old − new) · weight, and its division by 128 exact in
/// the first term: one product instead of two.
Unsigned drawnOn(Unsigned stored, Lanes covered, const Channels& colour, Lanes alpha) {
    const Unsigned before = swapped(stored);
    const Lanes weight = ((128 - alpha) * covered) >> 7;
    const auto mix = [weight](Unsigned old, Lanes now) {
        return now + (((std::bit_cast<Lanes>(old) - now) * weight) >> 7);
    };
    const Lanes red = mix(before >> 11, colour.red);
    const Lanes green = mix(before >> 5 & 0x3f, colour.green);
    const Lanes blue = mix(before & 0x1f, colour.blue);
    return swapped(std::bit_cast<Unsigned>(red << 11 | green << 5 | blue));
}

void storeLarger(uint8_t* coverage, Lanes a, Lanes b) {
    const Bytes larger = __builtin_convertvector(a > b ? a : b, Bytes);
    std::memcpy(coverage, &larger, sizeof larger);
}

void blendEach(uint16_t* pixels, uint8_t* coverage, const rgba* colours, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        blend(pixels[i], coverage[i], colours[i]);
    }
}

/// Eight pixels at once.
void blendBlock(uint16_t* pixels, uint8_t* coverage, const rgba* colours) {
    const auto first = load<Unsigned>(colours);
    const auto second = load<Unsigned>(colours + kBlock / 2);
    constexpr int low = std::endian::native == std::endian::big ? 1 : 0;
    const Unsigned redGreen = everySecond<low>(first, second);
    const Unsigned blueAlpha = everySecond<1 - low>(first, second);
    const Lanes alpha = std::bit_cast<Lanes>(blueAlpha >> 8);
    const auto coverBytes = load<uint64_t>(coverage);
    if (anyAboveOpaque(coverBytes) || anyNegative(128 - alpha)) {
        return blendEach(pixels, coverage, colours, kBlock);
    }
    const Lanes covered = std::bit_cast<Lanes>(widened(coverBytes));
    const Channels channels = {std::bit_cast<Lanes>((redGreen & 0xff) >> 3),
                               std::bit_cast<Lanes>(redGreen >> 10),
                               std::bit_cast<Lanes>((blueAlpha & 0xff) >> 3)};
    const Unsigned result = drawnOn(load<Unsigned>(pixels), covered, channels, alpha);
    std::memcpy(pixels, &result, sizeof result);
    storeLarger(coverage, alpha, covered);
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

void blendRow(uint16_t* pixels, uint8_t* coverage, std::span<const rgba> colours) {
    size_t done = 0;
    for (; colours.size() - done >= kBlock; done += kBlock) {
        blendBlock(pixels + done, coverage + done, colours.data() + done);
    }
    blendEach(pixels + done, coverage + done, colours.data() + done, colours.size() - done);
}

Brush::Brush(rgba colour)
    : channels_{all(colour.r() >> 3), all(colour.g() >> 2), all(colour.b() >> 3)}, colour_(colour) {}

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
    const Lanes alpha = std::bit_cast<Lanes>(((level + 1) * uint16_t{colour_.a()}) >> 8);
    const Unsigned result = drawnOn(stored, covered, channels_, alpha);

    // Level 0 must leave even a half-covered pixel alone, so those lanes are not merely blended with 0.
    const Unsigned none = std::bit_cast<Unsigned>(level == 0);
    const Unsigned kept = (result & ~none) | (stored & none);
    std::memcpy(pixels, &kept, sizeof kept);
    storeLarger(coverage, alpha, covered);
}

}  // namespace Rgb565
