#include "Tests/Graphics/JpegFiles.h"

#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

#include <gtest/gtest.h>

#include <map>

#include "Tests/Graphics/PngFiles.h"

namespace {

J_COLOR_SPACE colourSpaceOf(JpegFile::Kind kind) {
    const std::map<JpegFile::Kind, J_COLOR_SPACE> spaces = {{JpegFile::Grey, JCS_GRAYSCALE},
                                                            {JpegFile::Unknown, JCS_UNKNOWN},
                                                            {JpegFile::Rgb, JCS_RGB},
                                                            {JpegFile::Cmyk, JCS_CMYK}};
    return spaces.at(kind);
}

/// One scan for the averages of all components, then one for each of the 63 others of each component.
std::vector<jpeg_scan_info> scanPerCoefficient() {
    std::vector<jpeg_scan_info> scans{{3, {0, 1, 2, 0}, 0, 0, 0, 0}};
    for (int coefficient = 1; coefficient < 64; ++coefficient) {
        for (int component = 0; component < 3; ++component) {
            scans.push_back({1, {component, 0, 0, 0}, coefficient, coefficient, 0, 0});
        }
    }
    return scans;
}

}  // namespace

void writeJpegFile(const std::string& path, const JpegFile& file) {
    FILE* out = std::fopen(path.c_str(), "wb");
    ASSERT_NE(out, nullptr) << path;
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    jpeg_stdio_dest(&jpeg, out);
    jpeg.image_width = file.width;
    jpeg.image_height = file.height;
    jpeg.input_components = file.kind;
    jpeg.in_color_space = colourSpaceOf(file.kind);
    jpeg_set_defaults(&jpeg);
    if (file.storedAsRgb) {
        jpeg_set_colorspace(&jpeg, JCS_RGB);
    }
    jpeg_set_quality(&jpeg, 100, TRUE);
    for (int i = 0; i < jpeg.num_components; ++i) {
        jpeg.comp_info[i].h_samp_factor = 1;
        jpeg.comp_info[i].v_samp_factor = 1;
    }
    const std::vector<jpeg_scan_info> scans = scanPerCoefficient();
    if (file.progressive) {
        jpeg_simple_progression(&jpeg);
    }
    if (file.scanPerCoefficient) {
        jpeg.scan_info = scans.data();
        jpeg.num_scans = static_cast<int>(scans.size());
    }
    const size_t rowBytes = size_t{file.width} * file.kind;
    ASSERT_EQ(file.samples.size(), rowBytes * file.height);
    jpeg_start_compress(&jpeg, TRUE);
    std::vector<uint8_t> samples = file.samples;
    for (size_t row = 0; row < file.height; ++row) {
        JSAMPROW start = samples.data() + row * rowBytes;
        jpeg_write_scanlines(&jpeg, &start, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    std::fclose(out);
}

std::string jpegWithClaimedSize(const std::string& scratchPath, uint16_t width, uint16_t height) {
    writeJpegFile(scratchPath, {.width = 8, .height = 8, .samples = std::vector<uint8_t>(8 * 8 * 3, 128)});
    std::string bytes = readBytes(scratchPath);
    const size_t frame = bytes.find("\xff\xc0");  // marker, 2 bytes of length, precision, height, width
    EXPECT_NE(std::string::npos, frame);
    bytes[frame + 5] = static_cast<char>(height >> 8);
    bytes[frame + 6] = static_cast<char>(height);
    bytes[frame + 7] = static_cast<char>(width >> 8);
    bytes[frame + 8] = static_cast<char>(width);
    return bytes;
}
