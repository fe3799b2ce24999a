#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Tools/overlayview/Bytes.h"
#include "Tools/overlayview/GlyphFormat.h"
#include "Tools/overlayview/Picture.h"

namespace overlayview {

/// All characters of a font file beside and below each other, as the file keeps them. A view of the file,
/// which must outlive it, as must the format.
class GlyphSheet {
public:
    /// @param offset where the characters begin; the rest of the file is theirs, less the padding.
    GlyphSheet(const GlyphFormat& format, Bytes file, std::size_t offset, const SheetLayout& layout);

    /// Rows of characters. A row that is not complete counts, up to 127 zero bytes at the end do not.
    std::uint64_t rows() const { return rows_; }

    /// Pixels of the whole sheet.
    std::uint64_t pixels() const;

    /// pixels() must be at most kMostPixels.
    Size size() const;

    /// One level for every pixel, row by row across the whole sheet. pixels() must be at most kMostPixels.
    std::vector<std::uint8_t> levels() const;

    /// The sheet in shades of grey, opaque. pixels() must be at most kMostPixels.
    Picture picture() const;

private:
    const GlyphFormat& format_;
    Bytes file_;
    std::size_t offset_;
    SheetLayout layout_;
    std::uint64_t rows_;
};

}  // namespace overlayview
