#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "Tools/boardsim/Models/PanelScreen.h"

namespace boardsim {

/// An 8-bit RGB picture, rows from top to bottom, three bytes a pixel without padding.
struct Picture {
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<std::uint8_t> rgb{};

    /// The three bytes of a pixel; `x` and `y` must lie inside.
    const std::uint8_t* at(std::size_t x, std::size_t y) const { return &rgb[3 * (y * width + x)]; }
};

/// The picture as an operator sees it: the panel is mounted upside down, so a frame is turned by 180 degrees,
/// and its 5-6-5 pixels are widened to 8 bits a colour by repeating their upper bits.
/// @param frame exactly `geometry.frameBytes()` bytes.
Picture seenByOperator(std::span<const std::byte> frame, const PanelGeometry& geometry);

/// The picture with every pixel repeated `scale` times in both directions. `scale` is at least 1.
Picture enlarge(const Picture& picture, std::size_t scale);

/// The picture with every `factor` times `factor` pixels averaged to one; at the right and at the bottom
/// there may be fewer to average. `factor` is at least 1.
Picture shrink(const Picture& picture, std::size_t factor);

}  // namespace boardsim
