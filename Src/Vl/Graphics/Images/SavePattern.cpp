#include <algorithm>
#include <array>

#include "Vl/Graphics/Images/OverlayContainer.h"
#include "Vl/Graphics/Images/RowOrder.h"
#include "Vl/Graphics/Pixels/YUVBitmap.h"
#include "Vl/Graphics/Pixels/YuvPixel.h"

namespace {

constexpr int kPairBytes = 4;
constexpr int64_t kPairsAtOnce = 1024;

/// Ten bits of luma, nine of chroma, rounded to eight. Meant: what is rounded up to 256 becomes 0.
uint8_t lumaByte(YuvPixel pixel) {
    return static_cast<uint8_t>((pixel.y() + 2) >> 2);
}
uint8_t chromaByte(int chroma) {
    return static_cast<uint8_t>((chroma + 1) >> 1);
}

/// Writes a row as pairs of pixels. The row of an odd width ends with half a pair: its other pixel is the
/// next one in memory, or an empty one after the last.
Overlay::Result writeRow(FILE* file, const YUVPixelBuffer& buffer, int64_t start, int width) {
    std::array<uint8_t, kPairsAtOnce * kPairBytes> bytes;
    size_t used = 0;
    const auto pixelAt = [&buffer](int64_t index) {
        return buffer.contains(index) ? YuvPixel{buffer.pixels()[index]} : YuvPixel{};
    };
    for (int64_t x = 0; x < width; x += 2) {
        const YuvPixel first = pixelAt(start + x);
        const YuvPixel second = pixelAt(start + x + 1);
        bytes[used++] = lumaByte(first);
        bytes[used++] = chromaByte(first.cb());
        bytes[used++] = lumaByte(second);
        bytes[used++] = chromaByte(second.cr());
        if (used == bytes.size() || x + 2 >= width) {
            if (const auto written = Overlay::write(file, std::span(bytes).first(used));
                written != Overlay::Ok) {
                return written;
            }
            used = 0;
        }
    }
    return Overlay::Ok;
}

}  // namespace

int YUVBitmap::savePattern(FILE* file, unsigned long id, bool interlaced) const {
    if (const auto begun = Overlay::beginBody(file); begun != Overlay::Ok) {
        return begun;
    }
    const int result = visitRows(getHeight(), interlaced, [&](int64_t row) {
        return writeRow(file, getBuffer(), row * getWidth(), getWidth());
    });
    if (result != Overlay::Ok) {
        return result;
    }
    const int64_t pairsPerRow = (int64_t{getWidth()} + 1) / 2;
    return Overlay::finish(file, id, getHeight() * pairsPerRow * kPairBytes);
}
