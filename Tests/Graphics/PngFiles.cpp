#include "Tests/Graphics/PngFiles.h"

#include <gtest/gtest.h>
#include <png.h>

#include <fstream>
#include <iterator>

void writePngFile(const std::string& path, const PngFile& file) {
    FILE* out = std::fopen(path.c_str(), "wb");
    ASSERT_NE(out, nullptr) << path;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, out);
    png_set_IHDR(png, info, file.width, file.height, file.bitDepth, file.colourType,
                 file.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (file.colourType == PngFile::Palette) {
        const png_color colours[2] = {{0, 0, 0}, {255, 255, 255}};
        png_set_PLTE(png, info, colours, 2);
    }
    png_write_info(png, info);
    const size_t rowBytes = png_get_rowbytes(png, info);
    ASSERT_EQ(file.samples.size(), rowBytes * file.height);
    std::vector<uint8_t> samples = file.samples;
    std::vector<png_bytep> rows;
    for (size_t row = 0; row < file.height; ++row) {
        rows.push_back(samples.data() + row * rowBytes);
    }
    png_write_image(png, rows.data());
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    std::fclose(out);
}

PngPixels readPngFile(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(0, png_image_begin_read_from_file(&image, path.c_str())) << path << ": " << image.message;
    image.format = PNG_FORMAT_RGBA;
    PngPixels pixels{image.width, image.height, std::vector<uint8_t>(PNG_IMAGE_SIZE(image))};
    EXPECT_NE(0, png_image_finish_read(&image, nullptr, pixels.samples.data(), 0, nullptr)) << image.message;
    return pixels;
}

std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void writeBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}
