// Image files of 1920 × 1080: ours reads into and writes from an overlay bitmap, the peers are the bare
// libraries, which only decode to memory and encode from it.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>
#include <png.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Vl/Graphics/Pixels/BitmapWithBuffer.h"
#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

namespace {

using Overlay = BitmapWithBuffer<YUVPixelBuffer>;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

struct CloseFile {
    void operator()(FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, CloseFile>;

File open(const std::string& path, const char* mode) {
    File file(std::fopen(path.c_str(), mode));
    if (!file) {
        std::abort();
    }
    return file;
}

/// A directory in memory for the files, so that no disk is measured; gone at the end.
class Files {
public:
    Files() {
        std::string pattern = "/dev/shm/valen-bench-XXXXXX";
        directory_ = mkdtemp(pattern.data());
    }
    ~Files() { std::filesystem::remove_all(directory_); }
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;
    std::string operator()(const char* name) const { return directory_ + "/" + name; }

private:
    std::string directory_;
};

/// A grain of the given strength, the same in every run.
class Grain {
public:
    explicit Grain(uint32_t strength) : strength_(strength) {}
    uint32_t operator()() {
        random_ = random_ * 1664525 + 1013904223;
        return (random_ >> 16) % strength_;
    }

private:
    uint32_t strength_;
    uint32_t random_ = 1;
};

/// RGB: slopes of colour with shapes before them, and a camera's grain.
std::vector<uint8_t> photograph() {
    std::vector<uint8_t> samples;
    samples.reserve(size_t{kWidth} * kHeight * 3);
    Grain grain(12);
    for (uint32_t y = 0; y < kHeight; ++y) {
        for (uint32_t x = 0; x < kWidth; ++x) {
            const uint32_t shape = (x * x / 700 + y * y / 400) / 97 % 3 * 40;
            const uint32_t noise = grain();
            for (const uint32_t slope : {x / 16, y / 9, (x + y) / 25}) {
                samples.push_back(static_cast<uint8_t>(slope + shape + noise));
            }
        }
    }
    return samples;
}

/// RGBA: a picture with a little grain under the flat panels of an interface, which let it through.
std::vector<uint8_t> interface() {
    std::vector<uint8_t> samples;
    samples.reserve(size_t{kWidth} * kHeight * 4);
    Grain grain(8);
    for (uint32_t y = 0; y < kHeight; ++y) {
        for (uint32_t x = 0; x < kWidth; ++x) {
            const bool panel = x / 240 % 2 != y / 135 % 2;
            const auto shade = static_cast<uint8_t>(panel ? (y % 27 == 0 ? 255 : 40) : x / 8 + grain());
            samples.insert(samples.end(), {shade, static_cast<uint8_t>(panel ? shade : y / 5 + grain()),
                                           static_cast<uint8_t>(panel ? 56 : (x + y) / 13 + grain()),
                                           static_cast<uint8_t>(panel && x % 480 > 240 ? 160 : 255)});
        }
    }
    return samples;
}

void writeWithLibpng(const std::string& path, const uint8_t* samples) {
    const File file = open(path, "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_set_compression_level(png, 9);
    png_set_IHDR(png, info, kWidth, kHeight, 8, PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (int row = 0; row < kHeight; ++row) {
        png_write_row(png, samples + ptrdiff_t{row} * kWidth * 4);
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
}

std::vector<uint8_t> readWithLibpng(const std::string& path) {
    const File file = open(path, "rb");
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file.get());
    png_read_info(png, info);
    std::vector<uint8_t> samples(png_get_rowbytes(png, info) * png_get_image_height(png, info));
    for (png_uint_32 row = 0; row < png_get_image_height(png, info); ++row) {
        png_read_row(png, samples.data() + row * png_get_rowbytes(png, info), nullptr);
    }
    png_destroy_read_struct(&png, &info, nullptr);
    return samples;
}

void writeWithLibjpeg(const std::string& path, std::vector<uint8_t> samples) {
    const File file = open(path, "wb");
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    jpeg_stdio_dest(&jpeg, file.get());
    jpeg.image_width = kWidth;
    jpeg.image_height = kHeight;
    jpeg.input_components = 3;
    jpeg.in_color_space = JCS_RGB;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, 90, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    for (int row = 0; row < kHeight; ++row) {
        JSAMPROW start = samples.data() + ptrdiff_t{row} * kWidth * 3;
        jpeg_write_scanlines(&jpeg, &start, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
}

std::vector<uint8_t> readWithLibjpeg(const std::string& path) {
    const File file = open(path, "rb");
    jpeg_decompress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&jpeg);
    jpeg_stdio_src(&jpeg, file.get());
    jpeg_read_header(&jpeg, TRUE);
    jpeg_start_decompress(&jpeg);
    std::vector<uint8_t> samples(size_t{jpeg.output_width} * jpeg.output_height * 3);
    while (jpeg.output_scanline < jpeg.output_height) {
        JSAMPROW start = samples.data() + size_t{jpeg.output_scanline} * jpeg.output_width * 3;
        jpeg_read_scanlines(&jpeg, &start, 1);
    }
    jpeg_finish_decompress(&jpeg);
    jpeg_destroy_decompress(&jpeg);
    return samples;
}

/// "a.png" and "a.jpg", written once for all repetitions.
const Files& picturesToLoad() {
    static const Files files;
    static const bool written = [] {
        writeWithLibpng(files("a.png"), interface().data());
        writeWithLibjpeg(files("a.jpg"), photograph());
        return true;
    }();
    benchmark::DoNotOptimize(written);
    return files;
}

/// Whether the overlay holds what drawing the samples pixel by pixel gives.
bool isDrawn(const Overlay& overlay, const std::vector<uint8_t>& samples, int channels) {
    YUVPixelBuffer expected;
    expected.resize(kWidth, kHeight);
    const uint8_t* sample = samples.data();
    for (int i = 0; i < kWidth * kHeight; ++i, sample += channels) {
        const int coverage = channels == 4 ? sample[3] * 128 / 255 : 128;
        expected.setPixel(i, rgba::of(sample[0], sample[1], sample[2], static_cast<uint8_t>(coverage)));
    }
    return std::equal(expected.pixels(), expected.pixels() + expected.count(), overlay.getBuffer().pixels());
}

void loadPngOurs(benchmark::State& state) {
    const Files& files = picturesToLoad();
    Overlay overlay(kWidth, kHeight);
    if (overlay.loadpng(files("a.png").c_str(), true) != 0 || !isDrawn(overlay, interface(), 4)) {
        state.SkipWithError("not as the plain loop");
    }
    for (auto _ : state) {
        overlay.setPosition(0, 0);
        overlay.loadpng(files("a.png").c_str(), true);
        benchmark::ClobberMemory();
    }
}

void loadPngLibpng(benchmark::State& state) {
    const Files& files = picturesToLoad();
    for (auto _ : state) {
        benchmark::DoNotOptimize(readWithLibpng(files("a.png")).data());
    }
}

void loadJpegOurs(benchmark::State& state) {
    const Files& files = picturesToLoad();
    Overlay overlay(kWidth, kHeight);
    if (overlay.loadjpeg(files("a.jpg").c_str(), false) != 0 ||
        !isDrawn(overlay, readWithLibjpeg(files("a.jpg")), 3)) {
        state.SkipWithError("not as the plain loop");
    }
    for (auto _ : state) {
        overlay.setPosition(0, 0);
        overlay.loadjpeg(files("a.jpg").c_str(), false);
        benchmark::ClobberMemory();
    }
}

void loadJpegLibjpeg(benchmark::State& state) {
    const Files& files = picturesToLoad();
    for (auto _ : state) {
        benchmark::DoNotOptimize(readWithLibjpeg(files("a.jpg")).data());
    }
}

/// The overlay's two images as SavePng is to write them.
struct SavedImages {
    std::vector<uint8_t> picture;
    std::vector<uint8_t> alpha;
};

Overlay& overlayToSave() {
    static Overlay overlay(kWidth, kHeight);
    const std::vector<uint8_t> samples = interface();
    for (int i = 0; i < kWidth * kHeight; ++i) {
        const uint8_t* sample = samples.data() + ptrdiff_t{i} * 4;
        overlay.getBuffer().setPixel(
            i, rgba::of(sample[0], sample[1], sample[2], static_cast<uint8_t>(sample[3] / 2 + 1)));
    }
    return overlay;
}

SavedImages imagesOf(const Overlay& overlay) {
    SavedImages images;
    for (int i = 0; i < kWidth * kHeight; ++i) {
        const rgba colour = overlay.getBuffer().getPixel(i);
        const auto alpha = static_cast<uint8_t>(colour.a() * 255 / 128);
        images.picture.insert(images.picture.end(), {colour.r(), colour.g(), colour.b(), alpha});
        images.alpha.insert(images.alpha.end(), {alpha, alpha, alpha, 255});
    }
    return images;
}

void savePngOurs(benchmark::State& state) {
    const Files files;
    const Overlay& overlay = overlayToSave();
    const SavedImages images = imagesOf(overlay);
    overlay.SavePng(files("a.png").c_str());
    if (readWithLibpng(files("a.png")) != images.picture ||
        readWithLibpng(files("a.png_alp.png")) != images.alpha) {
        state.SkipWithError("not as the plain loop");
    }
    for (auto _ : state) {
        overlay.SavePng(files("a.png").c_str());
    }
}

void savePngLibpng(benchmark::State& state) {
    const Files files;
    const SavedImages images = imagesOf(overlayToSave());
    for (auto _ : state) {
        writeWithLibpng(files("a.png"), images.picture.data());
        writeWithLibpng(files("b.png"), images.alpha.data());
    }
}

BENCHMARK(loadPngOurs)->Name("load_png/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(loadPngLibpng)->Name("load_png/libpng")->Unit(benchmark::kMillisecond);
BENCHMARK(loadJpegOurs)->Name("load_jpeg/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(loadJpegLibjpeg)->Name("load_jpeg/libjpeg")->Unit(benchmark::kMillisecond);
BENCHMARK(savePngOurs)->Name("save_png/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(savePngLibpng)->Name("save_png/libpng")->Unit(benchmark::kMillisecond);

}  // namespace
