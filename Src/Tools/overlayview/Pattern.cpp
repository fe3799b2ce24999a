#include "Tools/overlayview/Pattern.h"

#include <algorithm>
#include <vector>

#include "Tools/overlayview/Colour.h"

namespace overlayview {
namespace {

struct Pair {
    unsigned firstLuma;
    unsigned cb;
    unsigned secondLuma;
    unsigned cr;
};

Pair pairAt(Bytes body, std::size_t at) {
    return {byteAt(body, at), byteAt(body, at + 1), byteAt(body, at + 2), byteAt(body, at + 3)};
}

constexpr std::size_t kPairBytes = 4;

}  // namespace

std::size_t Pattern::colours(std::uint64_t pixels) const {
    std::vector<bool> seen(std::size_t{1} << 24);
    std::size_t colours = 0;
    const auto count = [&](unsigned colour) {
        colours += seen[colour] ? 0 : 1;
        seen[colour] = true;
    };
    const std::uint64_t bytes = std::min<std::uint64_t>(body_.size(), kPixelBytes * pixels);
    for (std::size_t at = 0; at + kPairBytes <= bytes; at += kPairBytes) {
        const Pair pair = pairAt(body_, at);
        const unsigned chroma = pair.cb << 8 | pair.cr;
        count(pair.firstLuma << 16 | chroma);
        count(pair.secondLuma << 16 | chroma);
    }
    return colours;
}

Picture Pattern::picture(Size size, RowOrder order) const {
    Picture picture{size, std::vector<Rgba>(size.pixels())};
    std::size_t at = 0;
    for (std::uint32_t stored = 0; stored < size.height; ++stored) {
        Rgba* row = picture.pixels.data() + std::size_t{pictureRow(stored, size.height, order)} * size.width;
        for (std::uint32_t x = 0; x + 1 < size.width; x += 2, at += kPairBytes) {
            if (at + kPairBytes > body_.size()) {
                return picture;
            }
            const Pair pair = pairAt(body_, at);
            row[x] = videoColour(pair.firstLuma, pair.cb, pair.cr);
            row[x + 1] = videoColour(pair.secondLuma, pair.cb, pair.cr);
        }
    }
    return picture;
}

}  // namespace overlayview
