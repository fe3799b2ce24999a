#pragma once

#include <cstdint>

/// One pixel word of the video overlay. Bits 0-8 Cr and 9-17 Cb, both centred on 256, 18-27 Y with black at
/// 64, 28-30 the coverage level from 0 (transparent) to 4 (opaque), 31 a flag that drawing never changes.
///
/// As in 4:2:2 video a pixel that was drawn alone holds one chroma sample and 0 for the other: Cb at an even
/// index, Cr at an odd one. A filled pixel holds both.
struct YuvPixel {
    static constexpr uint32_t kFlag = 0x80000000U;
    static constexpr int kBlack = 64;          ///< Y of black
    static constexpr int kGrey = 256;          ///< Cb and Cr of greys
    static constexpr int kOpaqueLevel = 4;     ///< the level of opaque pixels
    static constexpr int kLevelCoverage = 32;  ///< coverage on rgba's scale per level

    uint32_t word = 0;

    /// The pixel of these fields, each kept to its width (negative values as two's complement); flag clear.
    static constexpr YuvPixel of(int luma, int blueChroma, int redChroma, int coverageLevel) {
        return {
            (static_cast<uint32_t>(redChroma) & 0x1ff) | (static_cast<uint32_t>(blueChroma) & 0x1ff) << 9 |
            (static_cast<uint32_t>(luma) & 0x3ff) << 18 | (static_cast<uint32_t>(coverageLevel) & 7) << 28};
    }

    constexpr int cr() const { return static_cast<int>(word & 0x1ff); }
    constexpr int cb() const { return static_cast<int>(word >> 9 & 0x1ff); }
    constexpr int y() const { return static_cast<int>(word >> 18 & 0x3ff); }
    constexpr int level() const { return static_cast<int>(word >> 28 & 7); }
    constexpr bool flag() const { return (word & kFlag) != 0; }

    /// All fields of this pixel with the flag of another.
    constexpr YuvPixel withFlagOf(YuvPixel other) const { return {(word & ~kFlag) | (other.word & kFlag)}; }

    friend constexpr bool operator==(YuvPixel, YuvPixel) = default;
};

static_assert(sizeof(YuvPixel) == sizeof(uint32_t));
