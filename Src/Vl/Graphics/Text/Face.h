#pragma once

#include <cstdint>
#include <memory>

#include "Vl/Graphics/Images/Icon.h"
#include "Vl/Graphics/Pixels/Rgba.h"
#include "Vl/Graphics/Text/FontSpace.h"
#include "Vl/Graphics/Text/GlyphCache.h"

class Bitmap;
struct FT_FaceRec_;

namespace TextRender {

/// Width and height of a text in pixels (the width in 1/64 pixel where an operation says so).
struct TextSize {
    int width = 0;
    int height = 0;
};

/// A font at a size, with nine pictures that text can embed. Owns the FreeType face.
///
/// Text is a NUL-terminated byte string (null counts as empty): byte 10 breaks the line, bytes 1 to 9 draw
/// icon 1 to 9, every other byte, 128 to 255 included, is a character code; nothing is decoded. Lines are
/// `size()` pixels apart, whatever the size was set in. What FreeType refuses is said on standard error and
/// skipped; nothing throws but std::bad_alloc. Not thread-safe.
class Face {
public:
    static constexpr int kIcons = 9;

    Face();
    ~Face();
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    /// Takes ownership of a FreeType face, or null for none, in place of the earlier one, which is released
    /// unless it is the same; the size becomes −1. The face's library must live as long as the face is held.
    void Init(FT_FaceRec_* face);
    /// Releases the face, if any; size and cap height stay.
    void Clear();
    bool isLoaded() const { return face_ != nullptr; }

    /// Sets the size in points at 100 dpi and measures the cap height. Setting the current size again does
    /// nothing, also when it failed before or was set in pixels. The size is stored even if it cannot be set:
    /// without a face ("Face not loaded") or refused by FreeType ("Could not set size: …").
    void SetSize(int points);
    /// The same in pixels.
    void SetPixelSize(int pixels);

    /// The last size set, −1 when none.
    int size() const { return size_; }
    /// Rows from the baseline to the top of an "M" at the current size.
    int capHeight() const { return capHeight_; }

    /// Names the PNG file of icon `index`, 1 to 9; any other is said on standard error and ignored.
    void SetIcon(int index, const char* path);

    /// What a text takes: the width of its widest line, and the cap height plus `size()` for every line
    /// break. Each character takes `cell` pixels, or its own advance when `cell` is 0.
    /// @param pixels the advances count as whole pixels, each cut down; else the width adds them up in 1/64
    ///     pixel (icons and cells count as given either way)
    TextSize TextDimensions(const char* text, bool pixels, int cell);

    /// Draws a text with the top of its capitals at the bitmap's drawing position, whatever the alignment.
    /// A glyph that would start right of `maxX` starts a new line at the left margin, the drawing position's
    /// column or 0; where the bitmap's height is reached that ends the text. With `cell` other than 0 each
    /// character is centred in so many pixels. Position and alignment stay. Nothing without a face.
    void Render(const char* text, Bitmap& bmp, rgba colour, int maxX, int cell);

    /// Draws a text aligned about the bitmap's drawing position and moves the position past it. A box with
    /// a width makes the text wrap there; one with a height is filled with `boxColour` behind the text.
    void RenderAligned(const char* text, Bitmap& bmp, rgba colour, FontSpace box, rgba boxColour, int cell);

    /// Sets the largest size at which the text, as one line, fits width × height. With `multiline`, a line of
    /// at most half the box's height is broken into as many as fill the box instead, unless width or height
    /// make no sense. @return the room the text then takes, in pixels; as wide as the box when broken
    TextSize SetBestSize(const char* text, int width, int height, bool multiline);

    /// Draws a text as large as fits the box, centred as the box's flags say; the drawing position is the
    /// box's top-left corner and moves with the centring.
    void RenderFit(const char* text, Bitmap& bmp, FontSpace box, rgba colour, bool multiline);

private:
    struct Release {
        void operator()(FT_FaceRec_* face) const;
    };
    struct Pen;

    template <typename SetInFreeType>
    void changeSize(int size, SetInFreeType set);
    void measureCapHeight();
    TextSize measure(const char* text, bool pixels, int cell, GlyphCache::Purpose purpose);
    void drawIcon(const Icon& icon, Bitmap& bmp, Pen& pen) const;
    bool drawCharacter(uint8_t code, Bitmap& bmp, rgba colour, int cell, Pen& pen);

    std::unique_ptr<FT_FaceRec_, Release> face_;
    int size_ = -1;
    int capHeight_ = 0;
    std::unique_ptr<Icon[]> icons_;
    GlyphCache glyphs_;
};

}  // namespace TextRender
