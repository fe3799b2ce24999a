#include "Tools/overlayview/NumberFormat.h"

#include <bit>

namespace overlayview {
namespace {

std::uint64_t bytesPerPixelRow(const SheetLayout& layout) {
    return layout.cell.width / 8;
}

}  // namespace

std::uint64_t NumberFormat::bytesPerCharRow(const SheetLayout& layout) const {
    return bytesPerPixelRow(layout) * layout.columns * std::bit_ceil(layout.cell.height);
}

void NumberFormat::readRow(Bytes file, std::size_t offset, const SheetLayout& layout, const GlyphRow& row,
                           std::uint8_t* levels) const {
    const std::uint64_t rowBytes = bytesPerPixelRow(layout);
    std::uint64_t address = offset + row.charRow * bytesPerCharRow(layout) +
                            row.y * rowBytes * layout.columns + row.charColumn * rowBytes;
    if (rowBytes == 2) {
        address ^= 2;
    }
    std::uint64_t bits = bigEndian(file, address, rowBytes) << (32 - 8 * rowBytes);
    for (std::uint32_t x = layout.cell.width; x > 0; --x, bits >>= 1) {
        levels[x - 1] = static_cast<std::uint8_t>(bits & 1);
    }
}

}  // namespace overlayview
