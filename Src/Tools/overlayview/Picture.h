#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace overlayview {

/// No picture has more pixels; 8K television has 33,177,600.
constexpr std::uint64_t kMostPixels = std::uint64_t{1} << 25;

/// No side of a picture is longer; libpng refuses more.
constexpr std::uint32_t kLongestSide = 1'000'000;

struct Size {
    std::uint32_t width = 0;
    std::uint32_t height = 0;

    constexpr std::uint64_t pixels() const { return std::uint64_t{width} * height; }
    bool operator==(const Size&) const = default;
};

/// Whether a picture may have this size.
constexpr bool isDrawable(const Size& size) {
    return size.pixels() <= kMostPixels && size.width <= kLongestSide && size.height <= kLongestSide;
}

/// One pixel for human eyes; alpha 0 is transparent, 255 opaque.
struct Rgba {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 0;

    bool operator==(const Rgba&) const = default;
};

/// Rows from top to bottom without padding, of a drawable size.
struct Picture {
    Size size{};
    std::vector<Rgba> pixels{};
};

}  // namespace overlayview
