#include <array>
#include <cstdio>
#include <memory>
#include <new>

#include "Vl/Graphics/Images/WritePng.h"
#include "Vl/Graphics/Pixels/Bitmap.h"

namespace {

constexpr size_t kChannels = 4;
constexpr size_t kCompanionNameSize = 100;

/// Coverage 0-128 as an image's 0-255. Meant: a buffer that reads opaque as 255 makes 252 of it, the low
/// eight bits of 508.
constexpr uint8_t alphaOf(uint8_t coverage) {
    return static_cast<uint8_t>(coverage * 255 >> 7);
}

std::unique_ptr<uint8_t[]> imageOf(const PixelBuffer& buffer, size_t count) try {
    auto image = std::make_unique_for_overwrite<uint8_t[]>(count * kChannels);
    uint8_t* sample = image.get();
    for (size_t index = 0; index < count; ++index, sample += kChannels) {
        const rgba colour = buffer.getPixel(static_cast<int>(index));
        sample[0] = colour.r();
        sample[1] = colour.g();
        sample[2] = colour.b();
        sample[3] = alphaOf(colour.a());
    }
    return image;
} catch (const std::bad_alloc&) {
    endForLackOfImageMemory();
}

void turnIntoOpaqueGreyOfAlpha(uint8_t* image, size_t count) {
    for (uint8_t* sample = image; sample != image + count * kChannels; sample += kChannels) {
        sample[0] = sample[1] = sample[2] = sample[3];
        sample[3] = 255;
    }
}

}  // namespace

void Bitmap::SavePng(const char* path) const {
    const auto count = static_cast<size_t>(width_) * static_cast<size_t>(height_);
    const auto image = imageOf(getBuffer(), count);
    write_png(image.get(), width_, height_, path);

    turnIntoOpaqueGreyOfAlpha(image.get(), count);
    std::array<char, kCompanionNameSize> companion;
    std::snprintf(companion.data(), companion.size(), "%s_alp.png", path);  // meant: long names are cut
    write_png(image.get(), width_, height_, companion.data());
}
