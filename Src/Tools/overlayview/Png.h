#pragma once

#include <cstddef>
#include <vector>

#include "Tools/overlayview/Picture.h"

namespace overlayview {

/// Encodes a picture as an 8-bit RGBA PNG file. @param picture at least one pixel.
/// @throws std::runtime_error with libpng's own words when it fails.
std::vector<std::byte> encodePng(const Picture& picture);

}  // namespace overlayview
