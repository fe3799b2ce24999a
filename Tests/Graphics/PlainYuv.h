#pragma once

#include <array>
#include <cstdint>

/// The overlay's pixel words in plain 64-bit arithmetic, one pixel at a time, to compare the product with.
namespace PlainYuv {

int64_t luma(uint32_t colour);
int64_t blueChroma(uint32_t colour);
int64_t redChroma(uint32_t colour);
int64_t level(uint32_t colour);

/// The word that holds these fields, each cut to its width.
uint32_t word(int64_t y, int64_t cb, int64_t cr, int64_t level, bool flag);

/// `before` once a colour was drawn on the pixel at `index`.
uint32_t set(uint32_t before, int64_t index, uint32_t colour);

/// `before` once a rectangle was filled over it.
uint32_t filled(uint32_t before, uint32_t colour);

/// What a word reads as.
uint32_t read(uint32_t word);

/// The opaque colours of one green and one blue, red from 0 to 255, and the fields that belong to them.
struct Reds {
    Reds(uint32_t green, uint32_t blue);

    std::array<uint32_t, 256> colours;
    std::array<uint32_t, 256> even;  ///< the words, drawn on fresh pixels with an even index
    std::array<uint32_t, 256> odd;
    std::array<uint32_t, 256> filled;
};

}  // namespace PlainYuv
