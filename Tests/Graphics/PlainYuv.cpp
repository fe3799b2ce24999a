#include "Tests/Graphics/PlainYuv.h"

#include <algorithm>

namespace PlainYuv {

namespace {

int64_t red(uint32_t colour) {
    return colour % 256;
}

int64_t green(uint32_t colour) {
    return colour / 256 % 256;
}

int64_t blue(uint32_t colour) {
    return colour / 65536 % 256;
}

int64_t alpha(uint32_t colour) {
    return colour / 16777216;
}

/// The largest multiple of 64 that is not above the value.
int64_t down64(int64_t value) {
    return value - (value % 64 + 64) % 64;
}

int64_t down128(int64_t value) {
    return (value - (value % 128 + 128) % 128) / 128;
}

uint32_t channel(int64_t value) {
    return value < -3999 ? 0 : static_cast<uint32_t>(std::min<int64_t>(value / 4000, 255));
}

}  // namespace

int64_t luma(uint32_t colour) {
    return (257 * red(colour) + 504 * green(colour) + 98 * blue(colour)) / 250 + 64;
}

int64_t blueChroma(uint32_t colour) {
    return (-148 * red(colour) - 291 * green(colour) + 439 * blue(colour)) / 500 + 256;
}

int64_t redChroma(uint32_t colour) {
    return (439 * red(colour) - 368 * green(colour) - 71 * blue(colour)) / 500 + 256;
}

int64_t level(uint32_t colour) {
    return (alpha(colour) + 16) / 32 % 8;
}

uint32_t word(int64_t y, int64_t cb, int64_t cr, int64_t coverage, bool flag) {
    const auto cut = [](int64_t value, int64_t size) { return (value % size + size) % size; };
    return static_cast<uint32_t>(cut(cr, 512) + cut(cb, 512) * 512 + cut(y, 1024) * 262144 +
                                 cut(coverage, 8) * 268435456 + (flag ? 2147483648 : 0));
}

uint32_t set(uint32_t before, int64_t index, uint32_t colour) {
    const int64_t newY = luma(colour);
    const int64_t newCb = index % 2 == 0 ? blueChroma(colour) : 0;
    const int64_t newCr = index % 2 == 0 ? 0 : redChroma(colour);
    const int64_t newLevel = level(colour);
    const int64_t oldCr = before % 512;
    const int64_t oldCb = before / 512 % 512;
    const int64_t oldY = before / 262144 % 1024;
    const int64_t oldLevel = before / 268435456 % 8;
    const bool flag = before >= 2147483648;
    if (newLevel == 0) {
        return before;
    }
    if (oldLevel == 0 || newLevel == 4) {
        return word(newY, newCb, newCr, newLevel, flag);
    }
    const int64_t w = down128((128 - alpha(colour)) * (oldLevel * 32));
    return word((newY * (128 - w) + oldY * w) / 128, (newCb * (128 - w) + oldCb * w) / 128,
                (newCr * (128 - w) + oldCr * w) / 128, std::max(newLevel, oldLevel), flag);
}

uint32_t filled(uint32_t before, uint32_t colour) {
    return word(luma(colour), blueChroma(colour), redChroma(colour), level(colour), before >= 2147483648);
}

uint32_t read(uint32_t word) {
    const int64_t cr = down64(2 * int64_t{word % 512} - 512);
    const int64_t cb = down64(2 * (int64_t{word / 512 % 512} - 256));
    const int64_t y = down64(int64_t{word / 262144 % 1024} - 64) * 1164;
    return channel(y + 1596 * cr) + channel(y - 391 * cb - 813 * cr) * 256 +
           channel(y - 391 * cb + 2409 * cb) * 65536 + word / 268435456 % 8 * 32 * 16777216;
}

// Sums from one red to the next, because this is done for all colours.
Reds::Reds(uint32_t green, uint32_t blue) {
    int64_t y = 504 * int64_t{green} + 98 * int64_t{blue};
    int64_t cb = 439 * int64_t{blue} - 291 * int64_t{green};
    int64_t cr = -368 * int64_t{green} - 71 * int64_t{blue};
    for (uint32_t red = 0; red < 256; ++red, y += 257, cb -= 148, cr += 439) {
        const int64_t common = (y / 250 + 64) * 262144 + 4 * 268435456LL;
        const int64_t storedCb = (cb / 500 + 256) * 512;
        const int64_t storedCr = cr / 500 + 256;
        colours[red] = 0x80000000 + blue * 65536 + green * 256 + red;
        even[red] = static_cast<uint32_t>(common + storedCb);
        odd[red] = static_cast<uint32_t>(common + storedCr);
        filled[red] = static_cast<uint32_t>(common + storedCb + storedCr);
    }
}

}  // namespace PlainYuv
