#include "Tests/Support/PanelPicture.h"

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace support {
namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 48;

/// Five or six bits become eight by repeating the top bits, so that full stays full.
std::uint8_t widen(unsigned value, unsigned bits) {
    return static_cast<std::uint8_t>(value << (8 - bits) | value >> (2 * bits - 8));
}

png_image headerOf(const Picture& picture) {
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    return image;
}

/// Absolute difference of each channel, brightened so that the least one is seen.
Picture difference(const Picture& left, const Picture& right) {
    Picture result = left;
    std::transform(left.rgb.begin(), left.rgb.end(), right.rgb.begin(), result.rgb.begin(), [](int a, int b) {
        return static_cast<std::uint8_t>(a == b ? 0 : std::min(255, 64 + std::abs(a - b)));
    });
    return result;
}

}  // namespace

Picture asOperatorSees(std::string_view frame) {
    Picture picture{kWidth, kHeight, {}};
    EXPECT_EQ(std::size_t{kWidth * kHeight * 2}, frame.size());
    for (std::size_t end = frame.size(); end >= 2; end -= 2) {
        const unsigned pixel = static_cast<unsigned>(static_cast<std::uint8_t>(frame[end - 2])) << 8 |
                               static_cast<std::uint8_t>(frame[end - 1]);
        picture.rgb.insert(picture.rgb.end(),
                           {widen(pixel >> 11, 5), widen(pixel >> 5 & 0x3F, 6), widen(pixel & 0x1F, 5)});
    }
    return picture;
}

Picture readPng(const std::string& path) {
    Picture picture;
    png_image image = headerOf(picture);
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        ADD_FAILURE() << path << ": " << image.message;
        return picture;
    }
    image.format = PNG_FORMAT_RGB;
    picture = {static_cast<int>(image.width), static_cast<int>(image.height), {}};
    picture.rgb.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, picture.rgb.data(), 0, nullptr) == 0) {
        ADD_FAILURE() << path << ": " << image.message;
    }
    return picture;
}

void writePng(const std::string& path, const Picture& picture) {
    png_image image = headerOf(picture);
    if (png_image_write_to_file(&image, path.c_str(), 0, picture.rgb.data(), 0, nullptr) == 0) {
        ADD_FAILURE() << path << ": " << image.message;
    }
}

void expectLooksLike(const std::string& goldenPath, const Picture& picture) {
    if (std::getenv("VALEN_UPDATE_GOLDEN") != nullptr) {
        writePng(goldenPath, picture);
        return;
    }
    const Picture golden = readPng(goldenPath);
    if (golden.width == picture.width && golden.height == picture.height && golden.rgb == picture.rgb) {
        return;
    }
    const std::string name = std::filesystem::path(goldenPath).stem();
    writePng(name + ".actual.png", picture);
    if (golden.rgb.size() == picture.rgb.size()) {
        writePng(name + ".difference.png", difference(golden, picture));
    }
    ADD_FAILURE() << "not as in " << goldenPath << "; see " << name << ".actual.png and " << name
                  << ".difference.png in " << std::filesystem::current_path();
}

}  // namespace support
