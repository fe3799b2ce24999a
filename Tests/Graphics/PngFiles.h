#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What a PNG file is written from. `samples` are the rows as PNG stores them.
struct PngFile {
    enum ColourType { Grey = 0, Rgb = 2, Palette = 3, GreyAlpha = 4, Rgba = 6 };

    uint32_t width = 1;
    uint32_t height = 1;
    ColourType colourType = Rgb;
    int bitDepth = 8;
    bool interlaced = false;
    std::vector<uint8_t> samples;
};

/// Writes a PNG file through libpng.
void writePngFile(const std::string& path, const PngFile& file);

/// A PNG file's pixels as 8-bit red, green, blue and alpha, read through libpng's simplified interface, which
/// the product does not use.
struct PngPixels {
    uint32_t width = 0;
    uint32_t height = 0;
    std::vector<uint8_t> samples;
};
PngPixels readPngFile(const std::string& path);

std::string readBytes(const std::string& path);
void writeBytes(const std::string& path, const std::string& bytes);
