#pragma once

#include <cstdio>

#include "Vl/Graphics/Pixels/BitmapWithBuffer.h"
#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

/// A bitmap of video overlay pixels (see YuvPixel) that can be written to the files which the overlay
/// hardware reads: pictures as run lengths, patterns, and fonts character by character. Not thread-safe.
///
/// Every file but the raw fonts is a container, all values most significant byte first: 0xFFFFFFFF, the
/// identifier cut to 32 bits, the length of the body in 32-bit words, and at offset 12 the body, padded with
/// zero bytes to a multiple of 128 bytes.
///
/// All writers take a file that is open for writing at any place (not for appending) and belongs to the
/// caller, who closes it; its position afterwards is anywhere. What the file holds behind the end of what is
/// written stays: a file that is written anew has to be emptied first. They block while they write, and hand
/// everything to the system before they return. They return 0, or what went wrong first: −1 a seek failed (a
/// pipe, an offset below 0); −2 bytes could not be written (a full disk, a file open for reading only); −3
/// the file is null; −4 a character's place does not fit an offset, or the body a header. errno tells more
/// about −1 and −2. After a failure what was written before stays in the file; a container gets its header
/// last, so a new file has none then.
class YUVBitmap final : public BitmapWithBuffer<YUVPixelBuffer> {
public:
    /// Where in a font file a character goes. A font is a picture of characters of one size side by side.
    struct FontParams {
        FILE* file = nullptr;      ///< the caller's
        int column = 0;            ///< the character's place in its row of characters
        int row = 0;               ///< the row of characters
        int charactersPerRow = 0;  ///< how many stand side by side
        unsigned long id = 0;      ///< the container's identifier
    };

    using BitmapWithBuffer::BitmapWithBuffer;
    ~YUVBitmap() override;

    /// Writes the picture as run lengths (see RunLengths). With `interlaced` first the rows 0, 2, 4, …, then
    /// 1, 3, 5, …; a run goes on over the end of a row and from the even to the odd rows.
    int SaveRLE(FILE* file, unsigned long id, bool interlaced) const;

    /// Writes the picture as 8-bit 4:2:2 video, rows in the order of SaveRLE: for each pair of pixels Y and
    /// Cb of the first, Y and Cr of the second, each rounded. Meant: a rounded 256 is written as 0.
    ///
    /// Widths are expected to be even. In a row of odd width the last pair takes its second pixel from the
    /// start of the next row in memory; the very last pixel of the bitmap is paired with a word of 0.
    int savePattern(FILE* file, unsigned long id, bool interlaced) const;

    /// Writes the bitmap as one character of two bits a pixel (luma in four steps): groups of 32 pixels in
    /// eight bytes, the first pixel in the top bits. Group k of pixel row r goes to
    /// offset + bytes · ((r + height · row) · charactersPerRow + column) + 8 · k, where bytes = width / 8
    /// · 2.
    ///
    /// Kept as the hardware's files have it: a group that would go to 0x80000 goes to 0x80008; a last group
    /// of fewer pixels sits in the low bits of its eight bytes; with column 65 a newline goes to standard
    /// error after each pixel row. The first `int` is not used.
    int saveFontAtOffset(const FontParams& params, int, int offset) const;

    /// saveFontAtOffset 12, then pads the file and writes the container's header. The body is all that the
    /// file then holds, so characters may follow one another in any order: each widens the body if need be.
    int saveFont(const FontParams& params, int) const;

    /// saveFontAtOffset 0, without a header.
    int saveFontRaw(const FontParams& params, int) const;

    /// Writes the bitmap as one character of a bit a pixel, set where Y is above 197. A pixel row makes a
    /// 32-bit value, its last pixel in bit 0, of which the first n = width / 8 bytes are written, to
    /// offset + n · ((r + (row << b)) · charactersPerRow + column); b is the number of bits of height − 1.
    ///
    /// Kept as the hardware's files have it: only characters 32 pixels wide keep all their bits, wider ones
    /// the last 32 of each row (in four bytes); when n is 2, bit 1 of every offset is inverted, which swaps
    /// the halves of each 32-bit word.
    int saveNumberFontAtOffset(const FontParams& params, int offset) const;

    /// saveNumberFontAtOffset 12, then as saveFont.
    int saveNumberFont(const FontParams& params) const;

    /// saveNumberFontAtOffset 0, without a header.
    int saveNumberFontRaw(const FontParams& params) const;
};
