#include "Tests/Graphics/PlainOverlay.h"

#include <algorithm>

namespace {

int lumaOf(uint32_t word) {
    return static_cast<int>(word >> 18 & 0x3ff);
}
int cbOf(uint32_t word) {
    return static_cast<int>(word >> 9 & 0x1ff);
}
int crOf(uint32_t word) {
    return static_cast<int>(word & 0x1ff);
}
uint32_t levelOf(uint32_t word) {
    return word >> 28 & 7;
}

std::string bigEndianBytes(uint64_t value, int count) {
    std::string bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
        bytes += static_cast<char>(value >> shift & 0xff);
    }
    return bytes;
}

void overwrite(std::string& bytes, int64_t offset, const std::string& with) {
    const auto at = static_cast<size_t>(offset);
    bytes.resize(std::max(bytes.size(), at + with.size()));
    bytes.replace(at, with.size(), with);
}

uint32_t codeOf(uint32_t word) {
    const int cr = ((crOf(word) + 8) >> 4) & 31;
    const int cb = ((cbOf(word) + 8) >> 4) & 31;
    const int y = ((lumaOf(word) + 16) >> 5) & 31;
    return static_cast<uint32_t>(cr + cb * 32 + y * 1024) + levelOf(word) * 32768;
}

}  // namespace

uint32_t overlayWord(int y, int cb, int cr, int level) {
    return static_cast<uint32_t>(level) << 28 | static_cast<uint32_t>(y) << 18 |
           static_cast<uint32_t>(cb) << 9 | static_cast<uint32_t>(cr);
}

void paint(YUVBitmap& bitmap, const std::vector<uint32_t>& words) {
    std::copy(words.begin(), words.end(), bitmap.getBuffer().pixels());
}

PlainOverlay::PlainOverlay(const YUVBitmap& bitmap)
    : width(bitmap.getWidth()),
      height(bitmap.getHeight()),
      pixels(bitmap.getBuffer().pixels(), bitmap.getBuffer().pixels() + bitmap.getBuffer().count()) {}

std::vector<uint32_t> PlainOverlay::inOrder(bool interlaced) const {
    std::vector<uint32_t> words;
    for (int field = 0; field < 2; ++field) {
        for (int row = 0; row < height; ++row) {
            const bool wanted = interlaced ? row % 2 == field : field == 0;
            for (int x = 0; wanted && x < width; ++x) {
                words.push_back(pixels[static_cast<size_t>(row * width + x)]);
            }
        }
    }
    return words;
}

std::string PlainOverlay::runLengths(uint32_t id, bool interlaced) const {
    std::string body;
    uint32_t code = 0;
    uint32_t length = 0;
    for (const uint32_t word : inOrder(interlaced)) {
        if (length > 0 && (codeOf(word) != code || length == 16383)) {
            body += bigEndianBytes(code | length << 18, 4);
            length = 0;
        }
        code = codeOf(word);
        ++length;
    }
    if (length > 0) {
        body += bigEndianBytes(code | length << 18, 4);
    }
    return contained(id, body + std::string(4, '\0'));
}

std::string PlainOverlay::pattern(uint32_t id, bool interlaced) const {
    std::string body;
    for (int field = 0; field < 2; ++field) {
        for (int row = 0; row < height; ++row) {
            const bool wanted = interlaced ? row % 2 == field : field == 0;
            for (int x = 0; wanted && x < width; x += 2) {
                const auto index = static_cast<size_t>(row * width + x);
                const uint32_t first = pixels[index];
                const uint32_t second = index + 1 < pixels.size() ? pixels[index + 1] : 0;
                for (const int value : {(lumaOf(first) + 2) >> 2, (cbOf(first) + 1) >> 1,
                                        (lumaOf(second) + 2) >> 2, (crOf(second) + 1) >> 1}) {
                    body += static_cast<char>(value & 0xff);
                }
            }
        }
    }
    return contained(id, body);
}

void PlainOverlay::font(std::string& bytes, int column, int row, int perRow, int offset) const {
    const int64_t rowBytes = (width / 8) * 2;
    for (int r = 0; r < height; ++r) {
        for (int k = 0; k * 32 < width; ++k) {
            uint64_t group = 0;
            for (int x = k * 32; x < std::min(width, k * 32 + 32); ++x) {
                const int y = lumaOf(pixels[static_cast<size_t>(r * width + x)]);
                const int scaled = (y - 63) * 4;
                const int level = y == 64 ? 0 : scaled < 3520 ? scaled / 880 : 3;
                group = group * 4 + static_cast<uint64_t>(level);
            }
            int64_t at =
                offset + r * rowBytes * perRow + rowBytes * column + height * row * rowBytes * perRow + 8 * k;
            if (at == 0x80000) {
                at = 0x80008;
            }
            overwrite(bytes, at, bigEndianBytes(group, 8));
        }
    }
}

void PlainOverlay::numberFont(std::string& bytes, int column, int row, int perRow, int offset) const {
    const int64_t n = width / 8;
    int b = 0;
    while (((height - 1) >> b) != 0) {
        ++b;
    }
    for (int r = 0; r < height; ++r) {
        uint32_t bits = 0;
        for (int x = 0; x < width; ++x) {
            bits = bits * 2 + (lumaOf(pixels[static_cast<size_t>(r * width + x)]) > 197 ? 1 : 0);
        }
        int64_t at = offset + r * n * perRow + n * column + (int64_t{row} << b) * n * perRow;
        if (n == 2) {
            at ^= 2;
        }
        if (n > 0) {
            overwrite(bytes, at, bigEndianBytes(bits, 4).substr(0, static_cast<size_t>(n)));
        }
    }
}

std::string contained(uint32_t id, std::string body) {
    while (body.size() % 128 != 0) {
        body += '\0';
    }
    return bigEndianBytes(0xffffffff, 4) + bigEndianBytes(id, 4) + bigEndianBytes(body.size() / 4, 4) + body;
}

void contain(uint32_t id, std::string& bytes) {
    bytes.resize(std::max<size_t>(bytes.size(), 12));
    bytes = contained(id, bytes.substr(12));
}
