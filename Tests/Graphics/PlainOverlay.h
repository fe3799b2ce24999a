#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Vl/Graphics/Pixels/YUVBitmap.h"

/// One word of the overlay, its fields named.
uint32_t overlayWord(int y, int cb, int cr, int level);

/// Puts these words into the bitmap, which has as many pixels.
void paint(YUVBitmap& bitmap, const std::vector<uint32_t>& words);

/// What the overlay's files must hold, made pixel by pixel and byte by byte.
struct PlainOverlay {
    explicit PlainOverlay(const YUVBitmap& bitmap);

    /// The words of the rows in the order in which they are written.
    std::vector<uint32_t> inOrder(bool interlaced) const;

    /// Whole files.
    std::string runLengths(uint32_t id, bool interlaced) const;
    std::string pattern(uint32_t id, bool interlaced) const;

    /// Put one character into a file that holds `bytes`.
    void font(std::string& bytes, int column, int row, int perRow, int offset) const;
    void numberFont(std::string& bytes, int column, int row, int perRow, int offset) const;

    int width;
    int height;
    std::vector<uint32_t> pixels;
};

/// The body padded and with its header.
std::string contained(uint32_t id, std::string body);

/// Makes the bytes from 12 on a container's body.
void contain(uint32_t id, std::string& bytes);
