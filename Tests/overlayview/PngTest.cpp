#include "Tools/overlayview/Png.h"

#include <gtest/gtest.h>

#include "Tests/overlayview/PngPixels.h"

namespace {

using overlayview::encodePng;
using overlayview::Picture;

TEST(OverlayPngTest, ReadsBackAsTheSamePixels) {
    Picture picture{{160, 48}};
    for (unsigned i = 0; i < 160 * 48; ++i) {
        picture.pixels.push_back({static_cast<std::uint8_t>(i * 31), static_cast<std::uint8_t>(i / 7),
                                  static_cast<std::uint8_t>(i * i), static_cast<std::uint8_t>(i * 3)});
    }
    const Picture read = overlays::pixelsOf(encodePng(picture));
    EXPECT_EQ(picture.size, read.size);
    EXPECT_EQ(picture.pixels, read.pixels);
}

TEST(OverlayPngTest, TheLongestSidesAreTaken) {
    for (const overlayview::Size size : {overlayview::Size{1'000'000, 1}, overlayview::Size{1, 1'000'000}}) {
        const Picture picture{size, std::vector<overlayview::Rgba>(1'000'000)};
        EXPECT_FALSE(encodePng(picture).empty());
    }
}

TEST(OverlayPngTest, APictureWithoutPixelsIsAnError) {
    EXPECT_THROW(encodePng(Picture{}), std::runtime_error);
}

}  // namespace
