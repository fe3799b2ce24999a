#pragma once

#include <cstddef>
#include <cstdint>

#include "Tools/overlayview/Bytes.h"
#include "Tools/overlayview/Picture.h"

namespace overlayview {

/// How the characters of a font lie in a file: `columns` beside each other, each of `cell` pixels. The file
/// does not tell.
struct SheetLayout {
    Size cell{};  ///< at least 8 pixels wide
    std::uint32_t columns = 1;
};

/// One row of pixels of one character.
struct GlyphRow {
    std::uint32_t charRow = 0;
    std::uint32_t charColumn = 0;
    std::uint32_t y = 0;  ///< inside the character
};

/// A way to store characters. Addresses count from the beginning of the file, the header included: some
/// oddities of the formats hang on them. Without state.
class GlyphFormat {
public:
    virtual ~GlyphFormat() = default;

    /// The largest level, which is drawn white; 0 is black.
    virtual std::uint8_t brightest() const = 0;

    /// The widest cell.
    virtual std::uint32_t mostWidth() const = 0;

    /// Whether a cell of this width keeps all its pixels.
    virtual bool keepsAll(std::uint32_t cellWidth) const = 0;

    /// Bytes from one row of characters to the next; at least 1.
    virtual std::uint64_t bytesPerCharRow(const SheetLayout& layout) const = 0;

    /// Writes one level for each pixel of the row, zeros where the file has ended.
    /// @param offset address of the first character. @param levels room for a cell's width.
    virtual void readRow(Bytes file, std::size_t offset, const SheetLayout& layout, const GlyphRow& row,
                         std::uint8_t* levels) const = 0;
};

}  // namespace overlayview
