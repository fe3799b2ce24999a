#pragma once

#include <cstdint>
#include <limits>
#include <memory>

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
    /// Replaces the array by width × height zero words; by none when the size makes no sense.
    void allocate(int width, int height) {
        const int64_t wanted = width > 0 && height > 0 ? int64_t{width} * height : 0;
        const int usable = wanted <= std::numeric_limits<int>::max() ? static_cast<int>(wanted) : 0;
        count_ = 0;
        pixels_ = usable > 0 ? std::make_unique<Word[]>(static_cast<size_t>(usable)) : nullptr;
        count_ = usable;
    }

private:
    std::unique_ptr<Word[]> pixels_;
    int count_ = 0;
};
