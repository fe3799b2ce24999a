#include "Tools/boardsim/Operator/Png.h"

#include <png.h>

#include <stdexcept>
#include <string>

namespace boardsim {

std::vector<std::byte> encodePng(const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;

    // The first call tells the size.
    png_alloc_size_t bytes = 0;
    std::vector<std::byte> file;
    if (png_image_write_to_memory(&image, nullptr, &bytes, 0, picture.rgb.data(), 0, nullptr) != 0) {
        file.resize(bytes);
        if (png_image_write_to_memory(&image, file.data(), &bytes, 0, picture.rgb.data(), 0, nullptr) != 0) {
            file.resize(bytes);
            return file;
        }
    }
    throw std::runtime_error(std::string("cannot encode the picture: ") + image.message);
}

}  // namespace boardsim
