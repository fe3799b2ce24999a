#pragma once

#include <cstddef>
#include <vector>

#include "Tools/boardsim/Operator/Picture.h"

namespace boardsim {

/// Encodes a picture as an 8-bit RGB PNG file without an alpha channel.
/// @param picture at least one pixel.
/// @throws std::runtime_error with libpng's own words when it fails.
std::vector<std::byte> encodePng(const Picture& picture);

}  // namespace boardsim
