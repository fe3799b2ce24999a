#pragma once

#include <cstdint>
#include <memory>

/// Reads one JPEG file (baseline or progressive) row by row. Owns the file and libjpeg's structures;
/// releases them at the end of its life. What is wrong with a file is told on standard error: in the words
/// below, else in libjpeg's. Not thread-safe.
class JpegReader {
public:
    /// Why a file was refused; the values are the result codes of Bitmap::loadjpeg.
    enum Result : int {
        Ok = 0,
        CannotOpen = -1,    ///< "can't open %s\n"
        LibraryError = -2,  ///< libjpeg gave up, or a limit below was passed
        NotRgb = -3,        ///< "invalid color space\n"; libjpeg makes RGB of three components by itself
        NotThreeComponents = -4,  ///< "invalid number of components\n"
    };

    /// The most pixels that are read, so that no file can take all memory: libjpeg holds a progressive image
    /// whole, at six bytes a pixel. More are a LibraryError, "too many pixels\n". A side may have 65,500
    /// pixels, libjpeg's own limit.
    static constexpr int64_t kMostPixels = int64_t{8192} * 8192;
    /// The most scans of a progressive file; each costs a pass over the whole image, however little of the
    /// file it takes. More are a LibraryError, "too many scans\n". Usual are ten.
    static constexpr int kMostScans = 100;

    /// Bytes per pixel: red, green, blue and 255, which is as quickly decoded and more quickly drawn than
    /// three.
    static constexpr int kChannels = 4;

    JpegReader();
    ~JpegReader();
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;

    /// Opens the file (a null path cannot be opened) and reads everything before the first row. Once per
    /// reader. libjpeg turns YCbCr into RGB; it does not do so with grey, CMYK and YCCK, which are
    /// NotThreeComponents. The number of components is judged before their colour space.
    Result open(const char* path);

    /// After a good open, for each of the `height()` rows from the top: reads width() × kChannels bytes.
    /// Ok or LibraryError. A file that ends early is not an error: libjpeg warns and makes the rest up.
    Result readRow(uint8_t* samples);

    int width() const;
    int height() const;

private:
    struct Decompressor;
    std::unique_ptr<Decompressor> jpeg_;
};
