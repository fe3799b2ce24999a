#include "Tools/boardsim/Operator/Png.h"

#include <gtest/gtest.h>
#include <png.h>

namespace {

using boardsim::encodePng;
using boardsim::Picture;

TEST(PngTest, ReadsBackAsTheSamePixels) {
    Picture picture{160, 48};
    for (std::size_t i = 0; i < 3 * picture.width * picture.height; ++i) {
        picture.rgb.push_back(static_cast<std::uint8_t>(i * 31));
    }
    const std::vector<std::byte> file = encodePng(picture);

    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_NE(0, png_image_begin_read_from_memory(&image, file.data(), file.size())) << image.message;
    EXPECT_EQ(160U, image.width);
    EXPECT_EQ(48U, image.height);
    EXPECT_EQ(static_cast<png_uint_32>(PNG_FORMAT_RGB), image.format) << "8-bit RGB without an alpha channel";
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    ASSERT_NE(0, png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr)) << image.message;
    EXPECT_EQ(picture.rgb, pixels);
}

TEST(PngTest, APictureWithoutPixelsIsAnError) {
    EXPECT_THROW(encodePng(Picture{}), std::runtime_error);
}

}  // namespace
