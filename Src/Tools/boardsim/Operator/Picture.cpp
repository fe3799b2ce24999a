#include "Tools/boardsim/Operator/Picture.h"

#include <algorithm>
#include <array>

namespace boardsim {
namespace {

std::uint8_t widen5(unsigned value) {
    return static_cast<std::uint8_t>(value << 3 | value >> 2);
}

std::uint8_t widen6(unsigned value) {
    return static_cast<std::uint8_t>(value << 2 | value >> 4);
}

struct Span {
    std::size_t first;
    std::size_t end;
};

void appendAverage(std::vector<std::uint8_t>& rgb, const Picture& picture, Span columns, Span rows) {
    std::array<std::size_t, 3> sums{};
    for (std::size_t y = rows.first; y < rows.end; ++y) {
        for (std::size_t x = columns.first; x < columns.end; ++x) {
            const std::uint8_t* pixel = picture.at(x, y);
            for (std::size_t colour = 0; colour < sums.size(); ++colour) {
                sums[colour] += pixel[colour];
            }
        }
    }
    const std::size_t count = (columns.end - columns.first) * (rows.end - rows.first);
    for (const std::size_t sum : sums) {
        rgb.push_back(static_cast<std::uint8_t>(sum / count));
    }
}

}  // namespace

Picture seenByOperator(std::span<const std::byte> frame, const PanelGeometry& geometry) {
    Picture picture{geometry.width, geometry.height};
    picture.rgb.reserve(3 * geometry.width * geometry.height);
    // Turning by 180 degrees is reading the pixels backwards.
    for (std::size_t end = frame.size(); end >= 2; end -= 2) {
        const unsigned pixel =
            std::to_integer<unsigned>(frame[end - 2]) << 8 | std::to_integer<unsigned>(frame[end - 1]);
        picture.rgb.push_back(widen5(pixel >> 11));
        picture.rgb.push_back(widen6(pixel >> 5 & 0x3F));
        picture.rgb.push_back(widen5(pixel & 0x1F));
    }
    return picture;
}

Picture enlarge(const Picture& picture, std::size_t scale) {
    Picture large{picture.width * scale, picture.height * scale};
    large.rgb.reserve(3 * large.width * large.height);
    for (std::size_t y = 0; y < large.height; ++y) {
        for (std::size_t x = 0; x < large.width; ++x) {
            const std::uint8_t* pixel = picture.at(x / scale, y / scale);
            large.rgb.insert(large.rgb.end(), pixel, pixel + 3);
        }
    }
    return large;
}

Picture shrink(const Picture& picture, std::size_t factor) {
    Picture small{(picture.width + factor - 1) / factor, (picture.height + factor - 1) / factor};
    small.rgb.reserve(3 * small.width * small.height);
    for (std::size_t y = 0; y < picture.height; y += factor) {
        for (std::size_t x = 0; x < picture.width; x += factor) {
            appendAverage(small.rgb, picture, {x, std::min(x + factor, picture.width)},
                          {y, std::min(y + factor, picture.height)});
        }
    }
    return small;
}

}  // namespace boardsim
