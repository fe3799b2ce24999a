#pragma once

#include <cstdint>

#include "Tools/overlayview/Picture.h"

namespace overlayview {

/// The pixel of a run: an 18-bit code.
struct RunCode {
    unsigned luma = 0;   ///< 5 bits, 10-bit luma in steps of 32: black 2, white 29
    unsigned cb = 0;     ///< 5 bits, 9-bit chroma in steps of 16: neutral 16; 0 stands for "not stored"
    unsigned cr = 0;     ///< as cb
    unsigned level = 0;  ///< 3 bits, coverage: 0 transparent, 4 opaque

    /// Code bits: 0-4 Cr, 5-9 Cb, 10-14 Y, 15-17 level.
    static constexpr RunCode from(std::uint32_t code) {
        return {code >> 10 & 31, code >> 5 & 31, code & 31, code >> 15 & 7};
    }
};

constexpr unsigned kOpaqueLevel = 4;

/// A run's colour, with BT.601's matrix; missing chroma counts as neutral, levels above 4 as opaque.
Rgba colourOf(const RunCode& code);

/// An opaque 8-bit video colour, with BT.601's matrix: luma 16 to 235, chroma 128 ± 112. What lies outside is
/// cut off.
Rgba videoColour(unsigned luma, unsigned cb, unsigned cr);

}  // namespace overlayview
