#include "Tools/overlayview/Png.h"

#include <png.h>

#include <stdexcept>
#include <string>

namespace overlayview {

// libpng reads the pixels as bytes.
static_assert(sizeof(Rgba) == 4 && alignof(Rgba) == 1);

std::vector<std::byte> encodePng(const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = picture.size.width;
    image.height = picture.size.height;
    image.format = PNG_FORMAT_RGBA;
    image.flags = PNG_IMAGE_FLAG_FAST;

    // No compressed picture is larger; encoding it once to learn the size would take twice as long.
    png_alloc_size_t bytes = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<std::byte> file(bytes);
    if (png_image_write_to_memory(&image, file.data(), &bytes, 0, picture.pixels.data(), 0, nullptr) == 0) {
        throw std::runtime_error(std::string("cannot encode the picture: ") + image.message);
    }
    file.resize(bytes);
    return file;
}

}  // namespace overlayview
