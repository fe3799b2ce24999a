#pragma once

#include <cstdint>
#include <string>
#include <vector>

class RGBPixelBuffer;

/// The panel's pixels in plain loops, one pixel at a time, to compare the product with.
struct PlainFrame {
    PlainFrame(int frameWidth, int frameHeight);
    /// A copy of what a product's buffer holds.
    PlainFrame(int frameWidth, int frameHeight, const RGBPixelBuffer& buffer);

    void setPixel(int index, uint32_t colour);
    void fill(int left, int top, int w, int h, uint32_t colour);
    /// Blends coverage with its top-left value at (left, top), cut at the edges.
    void blend(int left, int top, const uint8_t* levels, int pitch, int w, int h, uint32_t colour);
    void reverse();

    bool operator==(const RGBPixelBuffer& buffer) const;

    /// One line of text per row: '#' covered, '.' not.
    std::string art() const;

    int width;
    int height;
    std::vector<uint16_t> colours;  ///< as the panel takes them: the first byte in memory is the high one
    std::vector<uint8_t> coverage;
};

std::string artOf(int width, int height, const RGBPixelBuffer& buffer);
