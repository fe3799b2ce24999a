#pragma once

#include "Tools/overlayview/GlyphFormat.h"

namespace overlayview {

/// One bit a pixel; rows of characters are a power of two pixel rows apart. The row's bits are the low ones
/// of a 32-bit word of which the file keeps the first width / 8 bytes, so that only cells of 32 pixels keep
/// them all. Where that is two bytes, the halves of each word in the file are swapped.
class NumberFormat : public GlyphFormat {
public:
    std::uint8_t brightest() const override { return 1; }
    std::uint32_t mostWidth() const override { return 32; }
    bool keepsAll(std::uint32_t cellWidth) const override { return cellWidth == 32; }
    std::uint64_t bytesPerCharRow(const SheetLayout& layout) const override;
    void readRow(Bytes file, std::size_t offset, const SheetLayout& layout, const GlyphRow& row,
                 std::uint8_t* levels) const override;
};

}  // namespace overlayview
