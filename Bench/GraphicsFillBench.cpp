// Filling the whole frame: ours writes pixels and coverage, pixman_fill only pixels, memset both.
#include <benchmark/benchmark.h>
#include <pixman.h>

#include <cstring>
#include <vector>

#include "Tests/Graphics/PlainFrame.h"
#include "Vl/Graphics/OLED.h"

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 48;
constexpr uint32_t kColour = 0x80123456;

void ours(benchmark::State& state) {
    VLGraphics::OLED oled(kWidth, kHeight);
    PlainFrame expected(kWidth, kHeight);
    expected.fill(0, 0, kWidth, kHeight, kColour);
    oled.fill(kColour);
    if (!(expected == oled.getTypedBuffer())) {
        state.SkipWithError("not as the plain loop");
    }
    for (auto _ : state) {
        oled.fill(kColour);
        benchmark::ClobberMemory();
    }
}

void pixmanFill(benchmark::State& state) {
    std::vector<uint32_t> pixels(kWidth / 2 * kHeight);
    for (auto _ : state) {
        pixman_fill(pixels.data(), kWidth / 2, 16, 0, 0, kWidth, kHeight, 0x1234);
        benchmark::ClobberMemory();
    }
}

void memsetBoth(benchmark::State& state) {
    std::vector<uint16_t> pixels(kWidth * kHeight);
    std::vector<uint8_t> coverage(kWidth * kHeight);
    for (auto _ : state) {
        std::memset(pixels.data(), 0x12, pixels.size() * sizeof(uint16_t));
        std::memset(coverage.data(), 0x80, coverage.size());
        benchmark::ClobberMemory();
    }
}

BENCHMARK(ours)->Name("fill_frame/ours");
BENCHMARK(pixmanFill)->Name("fill_frame/pixman_fill");
BENCHMARK(memsetBoth)->Name("fill_frame/memset");

}  // namespace
