// Overlay pictures of 1920 × 1080 as run lengths: one colour, an interface, noise. The peer copies the
// picture's words. Making the words is measured without the file; the whole file (in memory) beside a bare
// write of the same bytes.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "Tests/Graphics/PlainOverlay.h"
#include "Tests/Graphics/PlainText.h"
#include "Vl/Graphics/Images/RunLengths.h"
#include "Vl/Graphics/Pixels/YUVBitmap.h"
#include "Vl/Graphics/Text/Face.h"
#include "Vl/Graphics/Text/Render.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr size_t kPixels = size_t{kWidth} * kHeight;
constexpr const char* kPath = "/dev/shm/valen-rle-bench";

void fill(YUVBitmap& bitmap, int x, int y, int width, int height, rgba colour) {
    bitmap.setPosition(x, y);
    bitmap.FillRect(width, height, colour);
}

void drawFlat(YUVBitmap& bitmap) {
    fill(bitmap, 0, 0, kWidth, kHeight, 0x80604020);
}

/// A title, a list with a line for each of its rows, and buttons.
void drawInterface(YUVBitmap& bitmap) {
    TextRender::Face font;
    TextRender::Render::NewFace(kTestFont, font);
    const auto write = [&](int x, int y, int points, const char* text) {
        font.SetSize(points);
        bitmap.setPosition(x, y);
        font.Render(text, bitmap, 0x80ffffff, INT_MAX, 0);
    };
    drawFlat(bitmap);
    fill(bitmap, 0, 0, kWidth, 90, 0x80303030);
    write(40, 30, 24, "Inputs and outputs");
    for (int row = 0; row < 18; ++row) {
        const int y = 120 + 45 * row;
        fill(bitmap, 40, y, 1300, 44, row % 2 == 0 ? 0x80504840 : 0x80585048);
        write(60, y + 14, 12, ("Input " + std::to_string(row + 1) + ": 1920 x 1080, 59.94 Hz").c_str());
        write(1100, y + 14, 12, row % 3 == 0 ? "no signal" : "locked");
    }
    for (int button = 0; button < 6; ++button) {
        const int y = 120 + 130 * button;
        fill(bitmap, 1400, y, 480, 110, 0x80a0a0a0);
        fill(bitmap, 1403, y + 3, 474, 104, 0x80406080);
        write(1440, y + 40, 18, "Apply to all");
    }
}

void drawNoise(YUVBitmap& bitmap) {
    std::mt19937 random(1);
    for (size_t i = 0; i < kPixels; ++i) {
        bitmap.getBuffer().pixels()[i] = static_cast<uint32_t>(random());
    }
}

using Draw = void (*)(YUVBitmap&);

template <typename Take>
void code(const YUVBitmap& bitmap, Take take) {
    RunLengths runs(take);
    for (int row = 0; row < kHeight; ++row) {
        runs.add({bitmap.getBuffer().pixels() + row * kWidth, kWidth});
    }
    runs.finish();
}

void words(benchmark::State& state, Draw draw) {
    YUVBitmap bitmap(kWidth, kHeight);
    draw(bitmap);
    std::string body;
    code(bitmap, [&body](std::span<const uint32_t> more) {
        body.append(reinterpret_cast<const char*>(more.data()), more.size_bytes());
        return true;
    });
    state.counters["words"] = static_cast<double>(body.size() / sizeof(uint32_t));
    if (contained(1, body) != PlainOverlay(bitmap).runLengths(1, false)) {
        state.SkipWithError("not as the plain loop");
        return;
    }
    for (auto _ : state) {
        code(bitmap, [](std::span<const uint32_t> more) {
            benchmark::DoNotOptimize(more.data());
            benchmark::ClobberMemory();
            return true;
        });
    }
}

void copy(benchmark::State& state) {
    YUVBitmap bitmap(kWidth, kHeight);
    drawNoise(bitmap);
    std::vector<uint32_t> copied(kPixels);
    for (auto _ : state) {
        std::memcpy(copied.data(), bitmap.getBuffer().pixels(), kPixels * sizeof(uint32_t));
        benchmark::ClobberMemory();
    }
}

void file(benchmark::State& state, Draw draw) {
    YUVBitmap bitmap(kWidth, kHeight);
    draw(bitmap);
    for (auto _ : state) {
        FILE* const out = std::fopen(kPath, "wb");
        if (out == nullptr || bitmap.SaveRLE(out, 1, false) != 0 || std::fclose(out) != 0) {
            state.SkipWithError("cannot write");
            break;
        }
    }
    unlink(kPath);
}

void bareWrite(benchmark::State& state, Draw draw) {
    YUVBitmap bitmap(kWidth, kHeight);
    draw(bitmap);
    const std::string bytes = PlainOverlay(bitmap).runLengths(1, false);
    for (auto _ : state) {
        const int out = open(kPath, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        if (write(out, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()) || close(out) != 0) {
            state.SkipWithError("cannot write");
            break;
        }
    }
    unlink(kPath);
}

BENCHMARK_CAPTURE(words, flat, drawFlat)->Name("rle_flat/ours");
BENCHMARK(copy)->Name("rle_flat/memcpy");
BENCHMARK_CAPTURE(words, interface, drawInterface)->Name("rle_interface/ours");
BENCHMARK(copy)->Name("rle_interface/memcpy");
BENCHMARK_CAPTURE(words, noise, drawNoise)->Name("rle_noise/ours");
BENCHMARK(copy)->Name("rle_noise/memcpy");

BENCHMARK_CAPTURE(file, flat, drawFlat)->Name("rle_flat_file/ours");
BENCHMARK_CAPTURE(bareWrite, flat, drawFlat)->Name("rle_flat_file/write");
BENCHMARK_CAPTURE(file, interface, drawInterface)->Name("rle_interface_file/ours");
BENCHMARK_CAPTURE(bareWrite, interface, drawInterface)->Name("rle_interface_file/write");
BENCHMARK_CAPTURE(file, noise, drawNoise)->Name("rle_noise_file/ours");
BENCHMARK_CAPTURE(bareWrite, noise, drawNoise)->Name("rle_noise_file/write");

}  // namespace
