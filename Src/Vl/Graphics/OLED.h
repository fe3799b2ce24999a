#pragma once

#include <cstdint>

#include "Vl/Graphics/Pixels/RGB16Bitmap.h"
#include "Vl/Graphics/Text/Face.h"

namespace VLGraphics {

/// The front panel's frame buffer: one frame of the panel's resolution, in the panel's byte order, and the
/// font that draws on it. Never resized. Not thread-safe.
class OLED {
public:
    /// A frame of w × h pixels, all colours and coverages 0; no font yet.
    OLED(int w, int h);
    virtual ~OLED();
    OLED(const OLED&) = delete;
    OLED& operator=(const OLED&) = delete;

    /// Loads "Font.ttf" from `directory`; null names none. Blocks on the file.
    /// @return whether it could be loaded; else the font stays as it was
    bool init(const char* directory);

    /// The pixels in panel byte order, row by row, ready to be sent. Valid as long as the frame.
    const uint16_t* getBuffer() const { return frame_.getBuffer().pixels(); }
    /// Size of the pixels in bytes: width × height × 2.
    int getBufferSize() const;

    RGB16Bitmap& getBmp() { return frame_; }
    RGBPixelBuffer& getTypedBuffer() { return frame_.getBuffer(); }
    TextRender::Face& getFont() { return font_; }

    /// Turns the frame by 180 degrees.
    void rotate() { getTypedBuffer().rotate(); }

    /// Moves the drawing position to (0, 0) and fills the frame with opaque red 200. That it clears to red
    /// and not to black is meant.
    void clear();

    /// Moves the drawing position to (0, 0) and overwrites the whole frame.
    void fill(rgba colour);

private:
    RGB16Bitmap frame_;
    TextRender::Face font_;
};

}  // namespace VLGraphics
