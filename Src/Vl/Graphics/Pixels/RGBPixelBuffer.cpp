#include "Vl/Graphics/Pixels/RGBPixelBuffer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <cwchar>
#include <utility>

#include "Vl/Graphics/Pixels/Rgb565.h"

namespace {

/// Fills through the C library's widest word fill: two pixels a wide character, the odd ends by hand.
void fillPixels(uint16_t* to, int64_t length, uint16_t pixel) {
    static_assert(sizeof(wchar_t) == 2 * sizeof(uint16_t));
    if (length > 0 && reinterpret_cast<uintptr_t>(to) % alignof(wchar_t) != 0) {
        *to++ = pixel;
        --length;
    }
    const auto pair = std::bit_cast<wchar_t>(uint32_t{pixel} << 16 | pixel);
    std::wmemset(reinterpret_cast<wchar_t*>(to), pair, static_cast<size_t>(length / 2));
    if (length % 2 != 0) {
        to[length - 1] = pixel;
    }
}

using EightPixels = uint16_t __attribute__((vector_size(16)));
using SixteenBytes = uint8_t __attribute__((vector_size(16)));

// In three steps, because each is one instruction where a full reversal is none.
EightPixels reversed(EightPixels block) {
    block = __builtin_shufflevector(block, block, 3, 2, 1, 0, 4, 5, 6, 7);
    block = __builtin_shufflevector(block, block, 0, 1, 2, 3, 7, 6, 5, 4);
    return __builtin_shufflevector(block, block, 4, 5, 6, 7, 0, 1, 2, 3);
}

SixteenBytes reversed(SixteenBytes block) {
    const EightPixels pairs = reversed(std::bit_cast<EightPixels>(block));
    return std::bit_cast<SixteenBytes>(pairs << 8 | pairs >> 8);
}

/// Reverses in place by swapping whole blocks from both ends.
template <typename Block, typename Value>
void reverseAll(Value* first, int count) {
    constexpr int step = sizeof(Block) / sizeof(Value);
    Value* last = first + count;
    for (; last - first >= 2 * step; first += step, last -= step) {
        Block head, tail;
        std::memcpy(&head, first, sizeof head);
        std::memcpy(&tail, last - step, sizeof tail);
        head = reversed(head);
        tail = reversed(tail);
        std::memcpy(first, &tail, sizeof tail);
        std::memcpy(last - step, &head, sizeof head);
    }
    std::reverse(first, last);
}

}  // namespace

RGBPixelBuffer::~RGBPixelBuffer() = default;

void RGBPixelBuffer::setPixel(int index, rgba colour) {
    if (contains(index)) {
        Rgb565::blend(pixels()[index], alpha_[static_cast<size_t>(index)], colour);
    }
}

void RGBPixelBuffer::setPixels(int start, std::span<const rgba> colours) {
    const auto [first, inside] = clipped(start, colours);
    Rgb565::blendRow(pixels() + first, alpha_.get() + first, inside);
}

rgba RGBPixelBuffer::getPixel(int index) const {
    if (!contains(index)) {
        return 0;
    }
    const int value = Rgb565::panelOrder(pixels()[index]);
    const bool opaque = alpha_[static_cast<size_t>(index)] >= kOpaque;
    return rgba::of(static_cast<uint8_t>((value >> 11) << 3), static_cast<uint8_t>((value >> 5 & 0x3f) << 2),
                    static_cast<uint8_t>((value & 0x1f) << 3), opaque ? 0xff : 0);
}

void RGBPixelBuffer::resize(int width, int height) {
    const int wanted = countOf(width, height);
    auto colours = zeroes<uint16_t>(wanted);
    auto coverage = zeroes<uint8_t>(wanted);
    adopt(std::move(colours), wanted);
    alpha_ = std::move(coverage);
}

void RGBPixelBuffer::fillRect(int start, int gap, int width, int height, rgba colour) {
    const uint16_t pixel = Rgb565::fromColour(colour);
    forEachSpan(start, gap, width, height, [&](int64_t first, int64_t length) {
        fillPixels(pixels() + first, length, pixel);
        std::memset(alpha_.get() + first, colour.a(), static_cast<size_t>(length));
    });
}

void RGBPixelBuffer::blendMask(int start, int gap, const CoverageMask& mask, rgba colour) {
    if (mask.width <= 0 || mask.height <= 0) {
        return;
    }
    const int64_t stride = int64_t{mask.width} + gap;
    const int64_t end = start + (mask.height - 1) * stride + mask.width;
    if (start < 0 || gap < 0 || end > count() || colour.a() > kOpaque) {
        return PixelBuffer::blendMask(start, gap, mask, colour);
    }
    const Rgb565::Brush brush(colour);
    int64_t row = start;
    for (int i = 0; i < mask.height; ++i, row += stride) {
        brush.blendRow(pixels() + row, alpha_.get() + row, mask.row(i), mask.width,
                       std::min<int64_t>(mask.readable, count() - row));
    }
}

void RGBPixelBuffer::rotate() {
    reverseAll<EightPixels>(pixels(), count());
    reverseAll<SixteenBytes>(alpha_.get(), count());
}
