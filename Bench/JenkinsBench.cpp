// The checksum of a test pattern of 1 KiB, against the mixing step in a bare loop.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

#include "Vl/Common/Identity/JenkinsChecksum.h"

namespace {

using Words = std::vector<unsigned int>;

Words randomWords() {
    std::mt19937 random(1);
    Words words(256);
    for (unsigned int& word : words) {
        word = static_cast<unsigned int>(random());
    }
    return words;
}

unsigned int bareLoop(const Words& words) {
    std::uint32_t hash = 0;
    for (const std::uint32_t word : words) {
        hash = (word + hash + (hash << 10)) ^ ~(hash >> 6);
    }
    return hash;
}

unsigned int ourChecksum(const Words& words) {
    return Valen::JenkinsChecksum::calculate(words.data(), static_cast<int>(words.size()), 0);
}

template <unsigned int (*Checksum)(const Words&)>
void checksum(benchmark::State& state) {
    const Words words = randomWords();
    if (ourChecksum(words) != bareLoop(words)) {
        state.SkipWithError("wrong checksum");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(Checksum(words));
        benchmark::ClobberMemory();
    }
}

BENCHMARK(checksum<ourChecksum>)->Name("jenkins_1k/ours");
BENCHMARK(checksum<bareLoop>)->Name("jenkins_1k/bare_loop");

}  // namespace
