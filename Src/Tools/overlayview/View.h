#pragma once

#include <optional>

#include "Tools/overlayview/Bytes.h"
#include "Tools/overlayview/Description.h"
#include "Tools/overlayview/Picture.h"
#include "Tools/overlayview/Request.h"

namespace overlayview {

/// A file looked at.
struct View {
    Description description{};
    std::optional<Picture>
        picture{};  ///< nothing when not wanted, or when findings.lacking says what is missing
};

/// Looks at an overlay file: takes it apart, finds out what it holds and draws it. Takes any bytes; what is
/// damaged is told and drawn as far as it goes. Memory stays within some 12 bytes for each pixel of a picture
/// of kMostPixels and a few for each byte of the file. Thread-safe: keeps nothing.
View look(Bytes file, const Request& request);

}  // namespace overlayview
