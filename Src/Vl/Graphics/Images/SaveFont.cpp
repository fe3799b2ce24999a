#include <algorithm>
#include <array>

#include "Vl/Graphics/Images/BigEndian.h"
#include "Vl/Graphics/Images/FontCell.h"
#include "Vl/Graphics/Images/OverlayContainer.h"
#include "Vl/Graphics/Pixels/YUVBitmap.h"
#include "Vl/Graphics/Pixels/YuvPixel.h"

namespace {

constexpr int kGroupPixels = 32;
constexpr int kGroupBytes = 8;
constexpr int64_t kAvoidedOffset = 0x80000;
constexpr int64_t kOffsetInstead = 0x80008;
constexpr int kReportedColumn = 65;

/// Luma in four steps of 220 above black.
uint64_t levelOf(YuvPixel pixel) {
    return static_cast<uint64_t>(std::clamp((pixel.y() - (YuvPixel::kBlack - 1)) / 220, 0, 3));
}

/// Two bits a pixel, the last one in bits 0 and 1: meant, fewer than 32 pixels leave the top bits 0.
uint64_t packed(std::span<const uint32_t> pixels) {
    uint64_t group = 0;
    for (const uint32_t pixel : pixels) {
        group = group << 2 | levelOf({pixel});
    }
    return group;
}

Overlay::Result writeGroup(FILE* file, std::optional<int64_t> offset, uint64_t group) {
    if (!offset) {
        return Overlay::TooLarge;
    }
    // Meant: nothing is ever put at this offset.
    const int64_t place = *offset == kAvoidedOffset ? kOffsetInstead : *offset;
    if (const auto there = Overlay::seek(file, place); there != Overlay::Ok) {
        return there;
    }
    return Overlay::write(file, bytesOf(std::array{bigEndian(group)}));
}

}  // namespace

int YUVBitmap::saveFontAtOffset(const FontParams& params, int /*meant: not used*/, int offset) const {
    if (params.file == nullptr) {
        return Overlay::NoFile;
    }
    const FontCell cell{.rowBytes = int64_t{getWidth()} / 8 * 2,
                        .charactersPerRow = params.charactersPerRow,
                        .column = params.column,
                        .firstRow = int64_t{getHeight()} * params.row};
    for (int64_t row = 0; row < getHeight(); ++row) {
        const std::span<const uint32_t> pixels(getBuffer().pixels() + row * getWidth(),
                                               static_cast<size_t>(getWidth()));
        int64_t start = offset;
        for (size_t x = 0; x < pixels.size(); x += kGroupPixels, start += kGroupBytes) {
            const auto group = pixels.subspan(x, std::min<size_t>(kGroupPixels, pixels.size() - x));
            const auto written = writeGroup(params.file, cell.offsetOf(row, start), packed(group));
            if (written != Overlay::Ok) {
                return written;
            }
        }
        // Meant: the one character that shows how far a long font has come.
        if (params.column == kReportedColumn) {
            std::fputc('\n', stderr);
        }
    }
    return Overlay::flush(params.file);
}

int YUVBitmap::saveFont(const FontParams& params, int unused) const {
    const int result = saveFontAtOffset(params, unused, Overlay::kBodyOffset);
    return result == Overlay::Ok ? Overlay::finishAtEnd(params.file, params.id) : result;
}

int YUVBitmap::saveFontRaw(const FontParams& params, int unused) const {
    return saveFontAtOffset(params, unused, 0);
}
