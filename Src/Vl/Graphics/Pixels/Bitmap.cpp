#include "Vl/Graphics/Pixels/Bitmap.h"

#include <algorithm>

#include "Vl/Graphics/Images/Icon.h"
#include "Vl/Graphics/Pixels/Saturated.h"

namespace {

/// One axis of a rectangle, cut to a bitmap of `limit` pixels.
struct Span {
    int64_t start;
    int64_t length;
};

Span cut(int position, int length, int limit) {
    Span span{position, length};
    if (position < 0) {
        span = {0, int64_t{length} + position};
    }
    // Meant: the far end is judged from the uncut position, so a rectangle that hangs over at the near end
    // may keep a length of more than `limit` pixels, and its rows then run into the next ones.
    if (position + span.length > limit) {
        span.length = limit - span.start;
    }
    return span;
}

}  // namespace

void Bitmap::FillRect(int w, int h, rgba colour) {
    const Span columns = cut(placement_.x, w, width_);
    const Span rows = cut(placement_.y, h, height_);
    if (columns.length <= 0 || rows.length <= 0) {
        return;
    }
    getBuffer().fillRect(saturated(width_ * rows.start + columns.start), saturated(width_ - columns.length),
                         saturated(columns.length), saturated(rows.length), colour);
}

void Bitmap::BlendMask(int left, int top, const CoverageMask& mask, rgba colour) {
    const int64_t column = std::max(left, 0);
    const int64_t row = std::max(top, 0);
    const int64_t columns = std::min(int64_t{left} + mask.width, int64_t{width_}) - column;
    const int64_t rows = std::min(int64_t{top} + mask.height, int64_t{height_}) - row;
    if (columns <= 0 || rows <= 0) {
        return;
    }
    const int64_t skippedColumns = column - left;
    const CoverageMask visible{.data = mask.data + (row - top) * mask.pitch + skippedColumns,
                               .pitch = mask.pitch,
                               .readable = static_cast<int>(mask.readable - skippedColumns),
                               .width = static_cast<int>(columns),
                               .height = static_cast<int>(rows)};
    getBuffer().blendMask(static_cast<int>(row * width_ + column), static_cast<int>(width_ - columns),
                          visible, colour);
}

void Bitmap::render(const Icon& icon) {
    loadpng(icon.getPath(), false);
}
