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

std::string readBytes(const std::string& path);
void writeBytes(const std::string& path, const std::string& bytes);
