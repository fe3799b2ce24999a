#pragma once

#include "Tools/overlayview/GlyphFormat.h"

namespace overlayview {

/// Two bits a pixel; 32 pixels are a group of 8 bytes, the first pixel in the most significant bits. A last
/// group of fewer pixels is right-aligned in its 8 bytes and overlaps the next character, which is written
/// later. The group for address 80000h is kept at 80008h.
class FontFormat : public GlyphFormat {
public:
    std::uint8_t brightest() const override { return 3; }
    std::uint32_t mostWidth() const override { return 4096; }
    bool keepsAll(std::uint32_t cellWidth) const override;
    std::uint64_t bytesPerCharRow(const SheetLayout& layout) const override;
    void readRow(Bytes file, std::size_t offset, const SheetLayout& layout, const GlyphRow& row,
                 std::uint8_t* levels) const override;
};

}  // namespace overlayview
