// Overlay pixels of a 1920 × 1080 picture. The peer converts the same RGBA picture to planes of 10-bit YUV
// 4:4:4, with the default method of its tools (bicubic) and no other option.
#include <benchmark/benchmark.h>

extern "C" {
#include <libavutil/pixfmt.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <random>
#include <span>
#include <vector>

#include "Tests/Graphics/PlainYuv.h"
#include "Vl/Graphics/Pixels/YUVPixelBuffer.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr uint32_t kColour = 0x80123456;

std::vector<rgba> opaquePicture() {
    std::mt19937 random(1);
    std::vector<rgba> picture;
    for (int i = 0; i < kWidth * kHeight; ++i) {
        picture.emplace_back((static_cast<uint32_t>(random()) & 0xffffff) | 0x80000000);
    }
    return picture;
}

/// A row at a time, as pictures are loaded.
void setPicture(YUVPixelBuffer& buffer, std::span<const rgba> picture) {
    for (int start = 0; start < kWidth * kHeight; start += kWidth) {
        buffer.setPixels(start, picture.subspan(static_cast<size_t>(start), kWidth));
    }
}

void set(benchmark::State& state) {
    const auto picture = opaquePicture();
    YUVPixelBuffer buffer;
    buffer.resize(kWidth, kHeight);
    setPicture(buffer, picture);
    for (int i = 0; i < buffer.count(); ++i) {
        if (buffer.pixels()[i] != PlainYuv::set(0, i, picture[static_cast<size_t>(i)].value)) {
            state.SkipWithError("not as the plain loop");
            return;
        }
    }
    for (auto _ : state) {
        setPicture(buffer, picture);
        benchmark::ClobberMemory();
    }
}

void fill(benchmark::State& state) {
    YUVPixelBuffer buffer;
    buffer.resize(kWidth, kHeight);
    buffer.fillRect(0, 0, kWidth, kHeight, kColour);
    for (int i = 0; i < buffer.count(); ++i) {
        if (buffer.pixels()[i] != PlainYuv::filled(0, kColour)) {
            state.SkipWithError("not as the plain loop");
            return;
        }
    }
    for (auto _ : state) {
        buffer.fillRect(0, 0, kWidth, kHeight, kColour);
        benchmark::ClobberMemory();
    }
}

void swscale(benchmark::State& state) {
    const auto picture = opaquePicture();
    std::vector<uint16_t> planes(size_t{3} * kWidth * kHeight);
    const std::unique_ptr<SwsContext, void (*)(SwsContext*)> scaler(
        sws_getContext(kWidth, kHeight, AV_PIX_FMT_RGBA, kWidth, kHeight, AV_PIX_FMT_YUV444P10, SWS_BICUBIC,
                       nullptr, nullptr, nullptr),
        sws_freeContext);
    const uint8_t* from[] = {reinterpret_cast<const uint8_t*>(picture.data())};
    const int fromPitch[] = {kWidth * 4};
    uint8_t* to[3];
    for (int i = 0; i < 3; ++i) {
        to[i] = reinterpret_cast<uint8_t*>(planes.data() + i * kWidth * kHeight);
    }
    const int toPitch[] = {kWidth * 2, kWidth * 2, kWidth * 2};
    for (auto _ : state) {
        sws_scale(scaler.get(), from, fromPitch, 0, kHeight, to, toPitch);
        benchmark::ClobberMemory();
    }
}

BENCHMARK(set)->Name("yuv_set_picture/ours");
BENCHMARK(swscale)->Name("yuv_set_picture/swscale");
BENCHMARK(fill)->Name("yuv_fill/ours");
BENCHMARK(swscale)->Name("yuv_fill/swscale");

}  // namespace
