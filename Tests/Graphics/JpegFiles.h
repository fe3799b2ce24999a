#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What a JPEG file is written from, at the best quality. `samples` are the rows as libjpeg takes them.
struct JpegFile {
    /// Components per pixel.
    enum Kind { Grey = 1, Unknown = 2, Rgb = 3, Cmyk = 4 };

    uint32_t width = 1;
    uint32_t height = 1;
    Kind kind = Rgb;
    bool storedAsRgb = false;  ///< instead of YCbCr
    bool progressive = false;
    bool scanPerCoefficient = false;  ///< progressive in 190 scans
    std::vector<uint8_t> samples;
};

/// Writes a JPEG file through libjpeg.
void writeJpegFile(const std::string& path, const JpegFile& file);

/// A JPEG file of one grey whose header claims another size.
std::string jpegWithClaimedSize(const std::string& scratchPath, uint16_t width, uint16_t height);
