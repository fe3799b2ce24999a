#include "Tools/overlayview/Colour.h"

#include <algorithm>

namespace overlayview {
namespace {

/// How a code counts luma and chroma.
struct Scale {
    int black;
    int white;
    int neutral;
    int chromaSwing;  ///< largest distance from neutral
};
constexpr Scale kRunScale{2, 29, 16, 14};
constexpr Scale kVideoScale{16, 235, 128, 112};

std::uint8_t channel(int thousandths) {
    return static_cast<std::uint8_t>(std::clamp((thousandths + 500) / 1000, 0, 255));
}

Rgba convert(const Scale& scale, unsigned luma, unsigned cb, unsigned cr, unsigned alpha) {
    // In thousandths: y 0 to 255, the chroma differences ±127.5. Integers, so that every machine draws the
    // same.
    const int y = (static_cast<int>(luma) - scale.black) * 255'000 / (scale.white - scale.black);
    const int blueness = (static_cast<int>(cb) - scale.neutral) * 127'500 / scale.chromaSwing;
    const int redness = (static_cast<int>(cr) - scale.neutral) * 127'500 / scale.chromaSwing;
    return {channel(y + redness * 1402 / 1000), channel(y - blueness * 344 / 1000 - redness * 714 / 1000),
            channel(y + blueness * 1772 / 1000), static_cast<std::uint8_t>(alpha)};
}

unsigned orNeutral(unsigned chroma) {
    return chroma != 0 ? chroma : static_cast<unsigned>(kRunScale.neutral);
}

}  // namespace

Rgba colourOf(const RunCode& code) {
    const unsigned alpha = std::min(code.level, kOpaqueLevel) * 255 / kOpaqueLevel;
    return convert(kRunScale, code.luma, orNeutral(code.cb), orNeutral(code.cr), alpha);
}

Rgba videoColour(unsigned luma, unsigned cb, unsigned cr) {
    return convert(kVideoScale, luma, cb, cr, 255);
}

}  // namespace overlayview
