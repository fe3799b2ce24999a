#include "Tools/overlayview/FontFormat.h"

#include <algorithm>

namespace overlayview {
namespace {

constexpr std::uint32_t kGroupPixels = 32;
constexpr std::size_t kGroupBytes = 8;
constexpr std::uint64_t kMovedGroup = 0x80000;
constexpr std::uint64_t kMovedTo = 0x80008;

std::uint64_t bytesPerPixelRow(const SheetLayout& layout) {
    return std::uint64_t{layout.cell.width / 8} * 2;
}

}  // namespace

bool FontFormat::keepsAll(std::uint32_t cellWidth) const {
    return cellWidth % kGroupPixels == 0;
}

std::uint64_t FontFormat::bytesPerCharRow(const SheetLayout& layout) const {
    return bytesPerPixelRow(layout) * layout.columns * layout.cell.height;
}

void FontFormat::readRow(Bytes file, std::size_t offset, const SheetLayout& layout, const GlyphRow& row,
                         std::uint8_t* levels) const {
    const std::uint64_t rowBytes = bytesPerPixelRow(layout);
    std::uint64_t address = offset + row.charRow * bytesPerCharRow(layout) +
                            row.y * rowBytes * layout.columns + row.charColumn * rowBytes;
    for (std::uint32_t x = 0; x < layout.cell.width; x += kGroupPixels, address += kGroupBytes) {
        const std::uint64_t place = address == kMovedGroup ? kMovedTo : address;
        std::uint64_t group = bigEndian(file, place, kGroupBytes);
        for (std::uint32_t i = std::min(kGroupPixels, layout.cell.width - x); i > 0; --i, group >>= 2) {
            levels[x + i - 1] = static_cast<std::uint8_t>(group & 3);
        }
    }
}

}  // namespace overlayview
