#include <algorithm>
#include <array>
#include <bit>

#include "Vl/Graphics/Images/BigEndian.h"
#include "Vl/Graphics/Images/FontCell.h"
#include "Vl/Graphics/Images/OverlayContainer.h"
#include "Vl/Graphics/Pixels/YUVBitmap.h"
#include "Vl/Graphics/Pixels/YuvPixel.h"

namespace {

constexpr int kDarkest = 197;  // Y of the brightest pixel that is not set

/// One bit a pixel, the last one in bit 0; only the last 32 pixels fit.
uint32_t packed(std::span<const uint32_t> pixels) {
    uint32_t bits = 0;
    for (const uint32_t pixel : pixels) {
        bits = bits << 1 | uint32_t{YuvPixel{pixel}.y() > kDarkest};
    }
    return bits;
}

}  // namespace

int YUVBitmap::saveNumberFontAtOffset(const FontParams& params, int offset) const {
    if (params.file == nullptr) {
        return Overlay::NoFile;
    }
    const int rowBytes = getWidth() / 8;
    const auto lastRow = static_cast<unsigned>(std::max(getHeight() - 1, 0));
    const FontCell cell{.rowBytes = rowBytes,
                        .charactersPerRow = params.charactersPerRow,
                        .column = params.column,
                        .firstRow = params.row * (int64_t{1} << std::bit_width(lastRow))};
    for (int64_t row = 0; row < getHeight(); ++row) {
        const auto place = cell.offsetOf(row, offset);
        if (!place) {
            return Overlay::TooLarge;
        }
        // Meant: rows of two bytes change places in pairs.
        if (const auto there = Overlay::seek(params.file, rowBytes == 2 ? *place ^ 2 : *place);
            there != Overlay::Ok) {
            return there;
        }
        const std::array bits = {
            bigEndian(packed({getBuffer().pixels() + row * getWidth(), static_cast<size_t>(getWidth())}))};
        // Meant: the first bytes of the value, though a narrow character's bits are in the last.
        const auto kept = static_cast<size_t>(std::min<int>(rowBytes, sizeof bits));
        if (const auto written = Overlay::write(params.file, bytesOf(bits).first(kept));
            written != Overlay::Ok) {
            return written;
        }
    }
    return Overlay::flush(params.file);
}

int YUVBitmap::saveNumberFont(const FontParams& params) const {
    const int result = saveNumberFontAtOffset(params, Overlay::kBodyOffset);
    return result == Overlay::Ok ? Overlay::finishAtEnd(params.file, params.id) : result;
}

int YUVBitmap::saveNumberFontRaw(const FontParams& params) const {
    return saveNumberFontAtOffset(params, 0);
}
