#pragma once

#include <cstdint>
#include <optional>

#include "Tools/overlayview/Container.h"
#include "Tools/overlayview/Findings.h"
#include "Tools/overlayview/Picture.h"
#include "Tools/overlayview/Request.h"

namespace overlayview {

/// The size of a picture of runs, which tell their number only: from the width (and height) in the request,
/// else a known size with so many pixels. In a damaged file (findings.damage is not empty) the last row may
/// be incomplete and the given height wins. Nothing with a sentence in findings.lacking when the size is
/// unknown, does not fit or is not drawable.
std::optional<Size> sizeOfRuns(std::uint64_t pixels, const Request& request, Findings& findings);

/// The size of a pattern, whose body also holds up to 127 bytes of padding. As sizeOfRuns(); in a damaged
/// file the header's length may tell a known size that the bytes do not reach.
std::optional<Size> sizeOfPattern(const Container& container, const Request& request, Findings& findings);

}  // namespace overlayview
