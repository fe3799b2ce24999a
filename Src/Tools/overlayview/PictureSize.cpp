#include "Tools/overlayview/PictureSize.h"

#include <algorithm>
#include <string>

#include "Tools/overlayview/KnownSizes.h"
#include "Tools/overlayview/Pattern.h"

namespace overlayview {
namespace {

std::string text(std::uint64_t width, std::uint64_t height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

std::uint64_t ceilDivide(std::uint64_t value, std::uint64_t by) {
    return (value + by - 1) / by;
}

/// The size with the request's width and so many rows, if a picture can have it.
std::optional<Size> sizeOf(std::uint32_t width, std::uint64_t height, Findings& findings) {
    if (height == 0) {
        findings.lacking.emplace_back("there are no pixels to draw");
        return std::nullopt;
    }
    if (height > kMostPixels / width || height > kLongestSide) {
        findings.lacking.push_back("a picture of " + text(width, height) + " is too large: another --width");
        return std::nullopt;
    }
    return Size{width, static_cast<std::uint32_t>(height)};
}

std::string doesNotFit(std::uint64_t pixels, const Size& size) {
    return "the file's " + std::to_string(pixels) + " pixels are no picture of " +
           text(size.width, size.height) + ": another --width";
}

std::string isNotKnown(std::uint64_t pixels) {
    return "the file's " + std::to_string(pixels) + " pixels are no well-known size: say --width N";
}

std::size_t trailingZeros(Bytes body) {
    const auto used = std::find_if(body.rbegin(), body.rend(), [](std::byte b) { return b != std::byte{0}; });
    return static_cast<std::size_t>(used - body.rbegin());
}

/// Whether the body holds such a pattern and nothing but padding behind it.
bool fits(Bytes body, const Size& size) {
    const std::uint64_t bytes = size.pixels() * Pattern::kPixelBytes;
    return bytes <= body.size() && body.size() - bytes < kBodyUnit &&
           trailingZeros(body) >= body.size() - bytes;
}

/// Whether the header tells the length of such a pattern.
bool isStated(const Container& container, const Size& size) {
    return container.header && std::uint64_t{container.header->bodyWords} * kWordBytes ==
                                   ceilDivide(size.pixels() * Pattern::kPixelBytes, kBodyUnit) * kBodyUnit;
}

std::optional<Size> knownPattern(const Container& container, Findings& findings) {
    for (const Size& size : kKnownSizes) {
        if (fits(container.body(), size) || isStated(container, size)) {
            return size;
        }
    }
    findings.lacking.push_back(isNotKnown(container.body().size() / Pattern::kPixelBytes));
    return std::nullopt;
}

}  // namespace

std::optional<Size> sizeOfRuns(std::uint64_t pixels, const Request& request, Findings& findings) {
    if (!request.width) {
        const std::optional<Size> known = knownSize(pixels);
        if (!known) {
            findings.lacking.push_back(isNotKnown(pixels));
        }
        return known;
    }
    const std::uint64_t height = request.height ? *request.height : ceilDivide(pixels, *request.width);
    const std::optional<Size> size = sizeOf(*request.width, height, findings);
    if (size && size->pixels() != pixels && findings.damage.empty()) {
        findings.lacking.push_back(doesNotFit(pixels, *size));
        return std::nullopt;
    }
    return size;
}

std::optional<Size> sizeOfPattern(const Container& container, const Request& request, Findings& findings) {
    if (!request.width) {
        return knownPattern(container, findings);
    }
    if (*request.width % 2 != 0) {
        findings.lacking.emplace_back("a pattern stores pairs of pixels: an even --width");
        return std::nullopt;
    }
    const Bytes body = container.body();
    const std::size_t used = body.size() - std::min(trailingZeros(body), kBodyUnit - 1);
    const std::uint64_t height = request.height
                                     ? *request.height
                                     : ceilDivide(used, std::uint64_t{*request.width} * Pattern::kPixelBytes);
    const std::optional<Size> size = sizeOf(*request.width, height, findings);
    if (size && !fits(body, *size) && findings.damage.empty()) {
        findings.lacking.push_back(doesNotFit(body.size() / Pattern::kPixelBytes, *size));
        return std::nullopt;
    }
    return size;
}

}  // namespace overlayview
