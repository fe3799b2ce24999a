// A hex dump of 5 KB, as the streams and the logs make them.
#include <benchmark/benchmark.h>
#include <spdlog/fmt/bin_to_hex.h>
#include <spdlog/fmt/fmt.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "Tests/Common/Strings/PlainHexDump.h"
#include "Vl/Common/Strings/HexDump.h"

namespace {

constexpr int kSize = 5120;
constexpr int kPerLine = 32;

/// The same bytes for both.
std::vector<unsigned char> noise() {
    std::mt19937 generator(1);
    std::vector<unsigned char> bytes(kSize);
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<unsigned char>(generator()); });
    return bytes;
}

void ours(benchmark::State& state) {
    const std::vector<unsigned char> bytes = noise();
    std::string out;
    Valen::BinaryToHexString(bytes.data(), kSize, out, false, true, kPerLine);
    if (out != plainHexDump(bytes, false, kPerLine, "%02X ")) {
        state.SkipWithError("differs from the plain loop");
        return;
    }
    for (auto _ : state) {
        Valen::BinaryToHexString(bytes.data(), kSize, out, false, true, kPerLine);
        benchmark::DoNotOptimize(out.data());
    }
}

/// Also lines of 32 bytes, each behind its place.
void spdlogToHex(benchmark::State& state) {
    const std::vector<unsigned char> bytes = noise();
    for (auto _ : state) {
        const std::string out = fmt::format("{:X}", spdlog::to_hex(bytes));
        benchmark::DoNotOptimize(out.data());
    }
}

BENCHMARK(ours)->Name("hex_dump/ours");
BENCHMARK(spdlogToHex)->Name("hex_dump/spdlog");

}  // namespace
