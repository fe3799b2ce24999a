#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

struct png_struct_def;
struct png_info_def;

/// Reads one PNG file: first its header, then, if wanted, its pixels. Owns the file and libpng's
/// structures; releases them at the end of its life. Prints nothing. Not thread-safe.
class PngReader {
public:
    /// Why a file was refused; the values are the result codes of Bitmap::loadpng.
    enum Result : int {
        Ok = 0,
        CannotOpen = -1,
        NotPng = -2,
        NoReadStructure = -3,
        NoInfoStructure = -4,
        HeaderError = -5,
        ImageError = -6,
        Palette = -7,
        BitDepth = -8,
    };

    /// The most pixels that are read, so that no file can take all memory. A side may have 1,000,000 pixels,
    /// libpng's own limit; the header of anything larger is an error.
    static constexpr int64_t kMostPixels = int64_t{8192} * 8192;

    PngReader();
    ~PngReader();
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    /// Opens the file (a null path cannot be opened) and reads everything before the pixels: CannotOpen to
    /// HeaderError. Once per reader. Any colour type and bit depth passes.
    Result readHeader(const char* path);

    /// After a good readHeader: reads the pixels into `pixels()`, row by row, `channels()` bytes each.
    /// Palette, BitDepth or ImageError. An image of more than `kMostPixels`, or one that its file is too
    /// short to hold, is an ImageError before memory is set aside for it.
    Result readImage();

    int width() const { return width_; }
    int height() const { return height_; }
    /// Bytes per pixel: 1 grey, 2 grey and alpha, 3 RGB, 4 RGBA.
    int channels() const { return channels_; }
    const std::vector<uint8_t>& pixels() const { return pixels_; }
    /// The samples of one row, `width() * channels()` bytes of `pixels()`.
    const uint8_t* row(int index) const { return pixels_.data() + int64_t{index} * width_ * channels_; }

private:
    struct CloseFile {
        void operator()(FILE* file) const { std::fclose(file); }
    };

    bool fileCanHold(uint64_t imageBytes) const;

    std::unique_ptr<FILE, CloseFile> file_;
    png_struct_def* png_ = nullptr;
    png_info_def* info_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    int channels_ = 0;
    std::vector<uint8_t> pixels_;
};
