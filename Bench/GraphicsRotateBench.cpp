// Turning the frame by 180 degrees, pixels and coverage.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include "Tests/Graphics/PlainFrame.h"
#include "Vl/Graphics/OLED.h"

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 48;

void ours(benchmark::State& state) {
    VLGraphics::OLED oled(kWidth, kHeight);
    for (int i = 0; i < kWidth * kHeight; ++i) {
        oled.getTypedBuffer().setPixel(i, static_cast<uint32_t>(i * 0x10307) & 0x7fffffff);
    }
    PlainFrame expected(kWidth, kHeight, oled.getTypedBuffer());
    expected.reverse();
    oled.rotate();
    if (!(expected == oled.getTypedBuffer())) {
        state.SkipWithError("not as the plain loop");
    }
    for (auto _ : state) {
        oled.rotate();
        benchmark::ClobberMemory();
    }
}

void stdReverse(benchmark::State& state) {
    std::vector<uint16_t> pixels(kWidth * kHeight);
    std::vector<uint8_t> coverage(kWidth * kHeight);
    for (auto _ : state) {
        std::reverse(pixels.begin(), pixels.end());
        std::reverse(coverage.begin(), coverage.end());
        benchmark::ClobberMemory();
    }
}

BENCHMARK(ours)->Name("rotate_frame/ours");
BENCHMARK(stdReverse)->Name("rotate_frame/std_reverse");

}  // namespace
