#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <utility>

#include "Vl/Graphics/Pixels/PixelBuffer.h"

/// The part of a pixel buffer that owns its array: `count` pixels of one `Word` each.
template <typename Word>
class PixelStorage : public PixelBuffer {
public:
    /// The pixels in index order; null while the buffer is empty.
    Word* pixels() { return pixels_.get(); }
    const Word* pixels() const { return pixels_.get(); }

    /// Number of pixels, 0 until the first resize.
    int count() const { return count_; }

    bool contains(int64_t index) const { return index >= 0 && index < count_; }

protected:
    /// The most pixels there can be: the size of their words in bytes is an int.
    static constexpr int kMost = std::numeric_limits<int>::max() / static_cast<int>(sizeof(Word));

    /// How many pixels width × height are; 0 when that makes no sense or is more than `kMost`.
    static constexpr int countOf(int width, int height) {
        const int64_t wanted = width > 0 && height > 0 ? int64_t{width} * height : 0;
        return wanted <= kMost ? static_cast<int>(wanted) : 0;
    }

    /// An array of `count` zero values; null for none.
    template <typename Value>
    static std::unique_ptr<Value[]> zeroes(int count) {
        if (count == 0) {
            return nullptr;
        }
        return std::make_unique<Value[]>(static_cast<size_t>(count));
    }

    /// Replaces the array by one of `count` words. Whoever keeps more than one array makes them all before
    /// it hands over this one, so that a lack of memory changes nothing.
    void adopt(std::unique_ptr<Word[]> pixels, int count) {
        pixels_ = std::move(pixels);
        count_ = count;
    }

    /// Hands what lies inside of each row of a rectangle to `fill(first index, length)`. Rows without a gap
    /// are one span; a row that begins outside ends it.
    template <typename Fill>
    void forEachSpan(int start, int gap, int width, int height, const Fill& fill) const {
        if (width <= 0 || height <= 0) {
            return;
        }
        int64_t length = width;
        if (gap == 0) {
            length *= height;
            height = 1;
        }
        const int64_t stride = int64_t{width} + gap;
        if (stride == 0) {  // every row is the first one
            height = 1;
        }
        int64_t row = start;
        for (int left = height; left > 0 && contains(row); --left, row += stride) {
            fill(row, std::min(length, count_ - row));
        }
    }

    /// What falls into the buffer of a row of colours that begins at index `start`, and the index of its
    /// first; no colours and index 0 when nothing does.
    struct Clipped {
        int64_t first = 0;
        std::span<const rgba> colours;
    };

    Clipped clipped(int start, std::span<const rgba> colours) const {
        const int64_t first = std::max(start, 0);
        const int64_t end = std::min(start + static_cast<int64_t>(colours.size()), int64_t{count_});
        if (first >= end) {
            return {};
        }
        return {first, colours.subspan(static_cast<size_t>(first - start), static_cast<size_t>(end - first))};
    }

private:
    std::unique_ptr<Word[]> pixels_;
    int count_ = 0;
};
