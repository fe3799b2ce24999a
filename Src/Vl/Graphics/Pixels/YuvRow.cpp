#include "Vl/Graphics/Pixels/YuvRow.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "Vl/Graphics/Pixels/Yuv.h"

namespace YuvRow {

namespace {

using Words = uint32_t __attribute__((vector_size(16)));
using Halves = uint16_t __attribute__((vector_size(16)));
using Signed = int16_t __attribute__((vector_size(16)));

constexpr int kInWords = 4;
constexpr int kBlock = 2 * kInWords;

constexpr uint32_t kLevelField = 0x70000000U;
constexpr uint32_t kOpaqueField = 0x40000000U;
constexpr uint32_t kCoverageByte = 0xff000000U;

template <typename From>
Words load(const From* from) {
    Words to;
    std::memcpy(&to, from, sizeof to);
    return to;
}

void store(uint32_t* to, Words words) {
    std::memcpy(to, &words, sizeof words);
}

bool any(Words words) {
    using Two = uint64_t __attribute__((vector_size(16)));
    const Two two = std::bit_cast<Two>(words);
    return (two[0] | two[1]) != 0;
}

/// Eight pixels as two vectors of words.
struct Block {
    Words first, second;
};

/// Eight 16-bit lanes from the lower halves of eight words and eight from the upper ones. The lanes hold the
/// pixels 0 4 1 5 2 6 3 7: three instructions each, where the natural order takes six. As pixels 4 apart are
/// both even or both odd, what depends on that goes by pairs of lanes. Does its own reverse.
struct Split {
    Halves low, high;
};

Split split(Words first, Words second) {
    return {std::bit_cast<Halves>((first & 0xffffU) | second << 16),
            std::bit_cast<Halves>(first >> 16 | (second & 0xffff0000U))};
}

Block joined(Halves low, Halves high) {
    const auto [first, second] = split(std::bit_cast<Words>(low), std::bit_cast<Words>(high));
    return {std::bit_cast<Words>(first), std::bit_cast<Words>(second)};
}

/// The upper halves of the products. Both compilers know this loop as one instruction.
Halves highProduct(Halves a, Halves b) {
    Halves result;
    for (int i = 0; i < kBlock; ++i) {
        result[i] = static_cast<uint16_t>((uint32_t{a[i]} * b[i]) >> 16);
    }
    return result;
}

/// Division by 125 · 2^twos of lanes up to 59000; by 250 of half that. 33555 is 2^22 / 125 rounded up.
template <int twos>
Halves dividedBy125(Halves lanes) {
    return highProduct(lanes, Halves{} + uint16_t{33555}) >> (6 + twos);
}

struct Channels {
    Halves r, g, b;
};

/// The sum 257 r + 504 g + 98 b does not fit a lane, but is 250 (r + 2 g) and a rest of at most 27795.
Halves lumaAboveBlack(const Channels& colour) {
    const Halves twice = colour.g + colour.g;
    const Halves rest = colour.r * 7 + twice + twice + colour.b * 98;
    return colour.r + twice + dividedBy125<1>(rest);
}

struct Weights {
    Signed r, g, b;
};

Signed weighted(const Channels& colour, const Weights& weights) {
    return std::bit_cast<Signed>(colour.r) * weights.r + std::bit_cast<Signed>(colour.g) * weights.g +
           std::bit_cast<Signed>(colour.b) * weights.b;
}

/// Cb's value in even and Cr's in odd pairs of lanes.
constexpr Signed each(int16_t cb, int16_t cr) {
    return Signed{cb, cb, cr, cr, cb, cb, cr, cr};
}

/// Cb in the lanes of even pixels, Cr in those of odd ones. The sums that are divided by 500, −148 r − 291 g
/// + 439 b and 439 r − 368 g − 71 b, do not fit a lane either: they are four times `quarters` and `rest`.
Halves chroma(const Channels& colour) {
    static constexpr Weights kQuarters = {each(-37, 110), each(-73, -92), each(110, -18)};
    static constexpr Weights kRests = {each(0, -1), each(1, 0), each(-1, 1)};
    static constexpr int kBias = 224;  // makes every quotient positive and no lane too large
    const Signed quarters = weighted(colour, kQuarters);
    const Signed rest = weighted(colour, kRests);
    const Signed negative = (quarters + (rest >> 2)) >> 15;
    // With a positive dividend division rounds down; negative quotients are to be rounded up.
    const Signed raised = quarters + ((rest + (negative & 499)) >> 2);
    return dividedBy125<0>(std::bit_cast<Halves>(raised) + uint16_t{kBias * 125}) +
           uint16_t{YuvPixel::kGrey - kBias};
}

/// Eight colours as pixels of level 0, the first at an even index.
Block converted(const Block& colours) {
    const auto [redGreen, blueCoverage] = split(colours.first, colours.second);
    const Channels colour = {redGreen & 0xff, redGreen >> 8, blueCoverage & 0xff};
    const Halves own = chroma(colour);
    const Halves shifted = std::bit_cast<Halves>(each(1 << 9, 1));  // as factors, since shifts are all alike
    const Halves high = (lumaAboveBlack(colour) + uint16_t{YuvPixel::kBlack}) << 2;
    return joined(own * shifted, high + highProduct(own, shifted));
}

/// The level of each colour in its field.
Words levels(Words colours) {
    return (colours + (16U << 24)) >> 1 & kLevelField;
}

/// Where the colour's level lets nothing of a fresh or an opaque pixel be mixed in, and the pixel not be
/// kept.
Words mixed(Words level, Words before) {
    const auto whole = (level == 0) | (level == kOpaqueField) | ((before & kLevelField) == 0);
    return std::bit_cast<Words>(~whole);
}

/// `now`, with its level and the flag of `before`; `before` where the level is 0.
Words drawn(Words now, Words level, Words before) {
    const auto kept = std::bit_cast<Words>(level == 0);
    const Words whole = now | level | (before & YuvPixel::kFlag);
    return (whole & ~kept) | (before & kept);
}

void blendEach(uint32_t* pixels, int64_t index, const rgba* colours, int64_t count) {
    for (int64_t i = 0; i < count; ++i) {
        pixels[i] = Yuv::blended({pixels[i]}, index + i, colours[i]).word;
    }
}

bool allOpaque(const Block& colours) {
    const uint32_t opaque = uint32_t{kOpaque} << 24;
    return !any(((colours.first ^ opaque) | (colours.second ^ opaque)) & kCoverageByte);
}

/// Eight pixels from an even index.
void blendBlock(uint32_t* pixels, const rgba* colours) {
    const Block colour = {load(colours), load(colours + kInWords)};
    const Block before = {load(pixels), load(pixels + kInWords)};
    const bool opaque = allOpaque(colour);
    const Block level = {levels(colour.first), levels(colour.second)};
    if (!opaque && any(mixed(level.first, before.first) | mixed(level.second, before.second))) {
        return blendEach(pixels, 0, colours, kBlock);
    }
    const Block now = converted(colour);
    if (opaque) {
        store(pixels, now.first | kOpaqueField | (before.first & YuvPixel::kFlag));
        store(pixels + kInWords, now.second | kOpaqueField | (before.second & YuvPixel::kFlag));
        return;
    }
    store(pixels, drawn(now.first, level.first, before.first));
    store(pixels + kInWords, drawn(now.second, level.second, before.second));
}

}  // namespace

void blend(uint32_t* pixels, int64_t index, std::span<const rgba> colours) {
    const auto count = static_cast<int64_t>(colours.size());
    int64_t done = std::min<int64_t>(index % 2, count);
    blendEach(pixels, index, colours.data(), done);
    for (; count - done >= kBlock; done += kBlock) {
        blendBlock(pixels + done, colours.data() + done);
    }
    blendEach(pixels + done, index + done, colours.data() + done, count - done);
}

void fill(uint32_t* pixels, int64_t length, YuvPixel pixel) {
    for (; length >= kInWords; length -= kInWords, pixels += kInWords) {
        store(pixels, (load(pixels) & YuvPixel::kFlag) | (pixel.word & ~YuvPixel::kFlag));
    }
    for (; length > 0; --length, ++pixels) {
        *pixels = pixel.withFlagOf({*pixels}).word;
    }
}

}  // namespace YuvRow
