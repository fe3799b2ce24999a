#pragma once

#include "Vl/Graphics/Pixels/CoverageMask.h"
#include "Vl/Graphics/Pixels/PixelBuffer.h"
#include "Vl/Graphics/Pixels/Rgba.h"

class Icon;

/// Where text and pictures lie relative to the drawing position's row.
enum class VerticalAlignment : int { Top = 0, Centred = 1, Bottom = 2 };
/// Where text and pictures lie relative to the drawing position's column.
enum class HorizontalAlignment : int { Start = 0, Centred = 1, End = 2 };

/// A drawing surface of width × height pixels with a drawing position and an alignment, over a pixel
/// buffer that the concrete bitmap owns. Not thread-safe.
class Bitmap {
public:
    /// The drawing position in pixels (it may lie outside) and how things are aligned about it.
    struct Placement {
        int x = 0;
        int y = 0;
        VerticalAlignment vertical = VerticalAlignment::Top;
        HorizontalAlignment horizontal = HorizontalAlignment::Start;
    };

    Bitmap() = default;
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;
    virtual ~Bitmap() = default;

    /// The pixels; they may be drawn on also when only the bitmap's shape is constant.
    virtual PixelBuffer& getBuffer() const = 0;

    /// Throws the picture away and makes a clear one of the new size; a size that makes no sense makes an
    /// empty one of 0 × 0. Position and alignment stay. Throws std::bad_alloc when memory is short; the
    /// bitmap is then as it was.
    virtual void resize(int width, int height) = 0;

    int getWidth() const { return width_; }
    int getHeight() const { return height_; }
    int getX() const { return placement_.x; }
    int getY() const { return placement_.y; }
    const Placement& getPlacement() const { return placement_; }

    void setPosition(int x, int y) {
        placement_.x = x;
        placement_.y = y;
    }
    void setVerticalAlignment(VerticalAlignment alignment) { placement_.vertical = alignment; }
    void setHorizontalAlignment(HorizontalAlignment alignment) { placement_.horizontal = alignment; }
    void setPlacement(const Placement& placement) { placement_ = placement; }

    /// Overwrites, without blending, a w × h rectangle whose top-left corner is the drawing position, cut
    /// at the bitmap's edges; one that ends up empty is not drawn. The position does not move.
    ///
    /// Meant, and odd: where the rectangle hangs over at the left or top, it is shortened by what hangs over,
    /// but the far edge is judged from the uncut position. So it may keep more columns than the bitmap has;
    /// its rows then run into the next ones. Nothing is ever written outside the bitmap's pixels.
    void FillRect(int w, int h, rgba colour);

    /// Blends coverage in one colour with its top-left value at (left, top), cut at the bitmap's edges.
    /// The drawing position plays no part.
    void BlendMask(int left, int top, const CoverageMask& mask, rgba colour);

    /// Draws the icon's picture about the drawing position and moves the position past it, as loadpng does
    /// without resizing. Nothing happens when the picture cannot be read.
    void render(const Icon& icon);

    /// Blends a PNG file about the drawing position and moves the position past it.
    ///
    /// Eight-bit grey, grey with alpha, RGB and RGBA are read, interlaced or not; pixels outside the bitmap
    /// are dropped. With `resize` the bitmap takes the image's size first. Images of more than 1,000,000
    /// pixels a side (−5) or more than PngReader::kMostPixels (−6) are refused. Blocks while it reads the
    /// file. Throws std::bad_alloc when memory is short.
    /// @return 0, or −1 the file cannot be opened, −2 not a PNG file, −3 and −4 libpng's read or info
    ///     structure cannot be created, −5 an error while reading the header, −6 an error while reading the
    ///     image, −7 a palette image, −8 a bit depth other than 8. On failure nothing is drawn or moved.
    int loadpng(const char* path, bool resize);

    /// Blends a JPEG file about the drawing position and moves the position past it.
    ///
    /// Baseline and progressive files of three components are read; pixels outside the bitmap are dropped.
    /// With `resize` the bitmap takes the image's size first. Images of more than 65,500 pixels a side or
    /// more than JpegReader::kMostPixels are refused (−2). A file that ends early is drawn with what libjpeg
    /// makes of the rest. What is wrong with a file, libjpeg's warnings as well, is told on standard error.
    /// Blocks while it reads the file. Throws std::bad_alloc when memory is short.
    /// @return 0, or −1 "can't open %s\n", −2 a libjpeg error, −3 not RGB ("invalid color space\n"), −4 not
    ///     three components, such as grey or CMYK ("invalid number of components\n"). On failure nothing is
    ///     drawn or moved; but if libjpeg fails amid the rows, those before it are drawn and the position is
    ///     that of the image's top-left pixel.
    int loadjpeg(const char* path, bool resize);

    /// Writes the picture to `path` as a PNG file with alpha, and to a second one its alpha as opaque grey.
    /// The second name is `path` with "_alp.png" behind it ("a.png_alp.png"), cut to 99 characters.
    ///
    /// Coverage 0-128 becomes alpha 0-255 as coverage · 255 >> 7, of which the low 8 bits are kept. A buffer
    /// that reads opaque as 255, as RGBPixelBuffer does, therefore comes out with alpha 252, which is meant.
    ///
    /// Every failure (a path that cannot be opened, a full disk, an empty bitmap, no memory) prints a message
    /// on standard error and ends the process; WritePng.h lists messages and statuses. Blocks.
    void SavePng(const char* path) const;

protected:
    void setSize(int width, int height) {
        width_ = width;
        height_ = height;
    }

private:
    int width_ = 0;
    int height_ = 0;
    Placement placement_;
};
