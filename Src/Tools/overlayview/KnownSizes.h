#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "Tools/overlayview/Picture.h"

namespace overlayview {

/// The sizes of video and of the front panel, the largest first, no two with equally many pixels.
constexpr std::array kKnownSizes{
    Size{4096, 2160}, Size{3840, 2160}, Size{2048, 1080}, Size{1920, 1080}, Size{1280, 720},
    Size{720, 576},   Size{720, 486},   Size{720, 480},   Size{640, 480},   Size{160, 48},
};
static_assert(std::is_sorted(kKnownSizes.begin(), kKnownSizes.end(),
                             [](const Size& a, const Size& b) { return a.pixels() >= b.pixels(); }));

/// The known size with so many pixels.
constexpr std::optional<Size> knownSize(std::uint64_t pixels) {
    for (const Size& size : kKnownSizes) {
        if (size.pixels() == pixels) {
            return size;
        }
    }
    return std::nullopt;
}

}  // namespace overlayview
