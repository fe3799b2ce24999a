#include "Tests/Graphics/PlainFrame.h"

#include <algorithm>
#include <bit>

#include "Vl/Graphics/Pixels/RGBPixelBuffer.h"

namespace {

uint16_t highByteFirst(int value) {
    const auto high = static_cast<uint16_t>(value >> 8 & 0xff);
    const auto low = static_cast<uint16_t>(value & 0xff);
    if (std::endian::native == std::endian::little) {
        return static_cast<uint16_t>(low << 8 | high);
    }
    return static_cast<uint16_t>(high << 8 | low);
}

int channel(int before, int weight, int now) {
    return (before * weight + now * (128 - weight)) / 128;
}

}  // namespace

PlainFrame::PlainFrame(int frameWidth, int frameHeight)
    : width(frameWidth),
      height(frameHeight),
      colours(static_cast<size_t>(width * height)),
      coverage(colours.size()) {}

PlainFrame::PlainFrame(int frameWidth, int frameHeight, const RGBPixelBuffer& buffer)
    : width(frameWidth),
      height(frameHeight),
      colours(buffer.pixels(), buffer.pixels() + buffer.count()),
      coverage(buffer.alpha(), buffer.alpha() + buffer.count()) {}

void PlainFrame::setPixel(int index, uint32_t colour) {
    const auto i = static_cast<size_t>(index);
    const int red = static_cast<int>(colour & 0xff);
    const int green = static_cast<int>(colour >> 8 & 0xff);
    const int blue = static_cast<int>(colour >> 16 & 0xff);
    const int alpha = static_cast<int>(colour >> 24);
    const int before = highByteFirst(colours[i]);
    const int weight = ((128 - alpha) * coverage[i]) >> 7;
    colours[i] = highByteFirst((channel(before / 2048, weight, red / 8) & 31) * 2048 +
                               (channel(before / 32 % 64, weight, green / 4) & 63) * 32 +
                               (channel(before % 32, weight, blue / 8) & 31));
    coverage[i] = static_cast<uint8_t>(std::max(alpha, int{coverage[i]}));
}

void PlainFrame::fill(int left, int top, int w, int h, uint32_t colour) {
    for (int row = std::max(top, 0); row < std::min(top + h, height); ++row) {
        for (int column = std::max(left, 0); column < std::min(left + w, width); ++column) {
            const auto i = static_cast<size_t>(row * width + column);
            coverage[i] = 0;  // the colour is then taken whole
            setPixel(static_cast<int>(i), colour);
            coverage[i] = static_cast<uint8_t>(colour >> 24);
        }
    }
}

void PlainFrame::blend(int left, int top, const uint8_t* levels, int pitch, int w, int h, uint32_t colour) {
    for (int row = 0; row < h; ++row) {
        for (int column = 0; column < w; ++column) {
            const uint32_t level = levels[row * pitch + column];
            const int x = left + column;
            const int y = top + row;
            if (level == 0 || x < 0 || y < 0 || x >= width || y >= height) {
                continue;
            }
            const uint32_t alpha = (colour >> 24) * (1 + level) / 256;
            setPixel(y * width + x, (colour & 0xffffff) + (alpha << 24));
        }
    }
}

void PlainFrame::reverse() {
    colours = {colours.rbegin(), colours.rend()};
    coverage = {coverage.rbegin(), coverage.rend()};
}

std::string PlainFrame::art() const {
    std::string text;
    for (size_t i = 0; i < coverage.size(); ++i) {
        text += coverage[i] != 0 ? '#' : '.';
        if ((i + 1) % static_cast<size_t>(width) == 0) {
            text += '\n';
        }
    }
    return text;
}

bool PlainFrame::operator==(const RGBPixelBuffer& buffer) const {
    return std::equal(colours.begin(), colours.end(), buffer.pixels(), buffer.pixels() + buffer.count()) &&
           std::equal(coverage.begin(), coverage.end(), buffer.alpha(), buffer.alpha() + buffer.count());
}

std::string artOf(int width, int height, const RGBPixelBuffer& buffer) {
    return PlainFrame(width, height, buffer).art();
}
