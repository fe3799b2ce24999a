#pragma once

#include <cstddef>

#include "Tools/overlayview/Bytes.h"
#include "Tools/overlayview/Picture.h"
#include "Tools/overlayview/RowOrder.h"

namespace overlayview {

/// A body of 8-bit 4:2:2 video: Y Cb Y Cr for two pixels, rows without padding, no end mark. A view of the
/// body, which must outlive it.
class Pattern {
public:
    explicit Pattern(Bytes body) : body_(body) {}

    static constexpr std::size_t kPixelBytes = 2;

    /// The number of different Y, Cb, Cr triples in the first `pixels` pixels; those behind the end do not
    /// count.
    std::size_t colours(std::uint64_t pixels) const;

    /// The picture for human eyes; pixels that the body does not have are transparent.
    /// @param size even width, at most kMostPixels.
    Picture picture(Size size, RowOrder order) const;

private:
    Bytes body_;
};

}  // namespace overlayview
