#pragma once

#include <gtest/gtest.h>
#include <png.h>

#include <cstddef>
#include <span>

#include "Tools/overlayview/Picture.h"

namespace overlays {

/// The pixels of a PNG file; fails the test when it is none of 8-bit RGBA.
inline overlayview::Picture pixelsOf(std::span<const std::byte> file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    overlayview::Picture picture;
    if (png_image_begin_read_from_memory(&image, file.data(), file.size()) == 0) {
        ADD_FAILURE() << image.message;
        return picture;
    }
    EXPECT_EQ(static_cast<png_uint_32>(PNG_FORMAT_RGBA), image.format);
    image.format = PNG_FORMAT_RGBA;
    picture.size = {image.width, image.height};
    picture.pixels.resize(picture.size.pixels());
    EXPECT_NE(0, png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr)) << image.message;
    return picture;
}

}  // namespace overlays
