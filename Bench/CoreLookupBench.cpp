// The address of the last of 200 cores, from opening the layout to closing it.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "Tests/HAL/LayoutBytes.h"
#include "Vl/HAL/Fpga/CoreLayout.h"

namespace {

constexpr int kCores = 200;
constexpr const char* kDirectory = "/sys/bus/avalon/devices/fpga";
constexpr const char* kLayout = "/sys/bus/avalon/devices/fpga/layout";

std::string nameOf(int index) {
    return "subsys_unit_" + std::to_string(index) + "_registers";
}

long addressOf(int index) {
    return 0x10000 + 0x40L * index;
}

/// Writes the layout. @return the last core's name.
std::string writeLayout() {
    std::string bytes;
    for (int i = 0; i < kCores; ++i) {
        bytes += core(nameOf(i), {1, static_cast<std::uint32_t>(addressOf(i))});
    }
    std::filesystem::create_directories(kDirectory);
    std::ofstream(kLayout, std::ios::binary) << bytes;
    return nameOf(kCores - 1);
}

std::uint32_t bigEndian(const unsigned char* bytes, int count) {
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) {
        value = value << 8 | bytes[i];
    }
    return value;
}

/// Knows the layout's size, trusts its content and does no more than is needed.
long plainLookup(const std::string& name) {
    std::array<unsigned char, 16384> layout;
    FILE* file = std::fopen(kLayout, "rb");
    const std::size_t size = std::fread(layout.data(), 1, layout.size(), file);
    std::fclose(file);
    const unsigned char* at = layout.data();
    while (at < layout.data() + size) {
        const std::size_t length = std::strlen(reinterpret_cast<const char*>(at));
        const bool isIt = length == name.size() && std::memcmp(at, name.data(), length) == 0;
        at += length + 1;
        if (isIt) {
            return bigEndian(at + 6, 4) & ~0x3FU;
        }
        at += 2 + 4 * bigEndian(at, 2);
    }
    return -1;
}

void ours(benchmark::State& state) {
    const std::string name = writeLayout();
    if (Valen::HAL::getPldCoreAddress("fpga", name.c_str(), 1, -1, -1) != addressOf(kCores - 1) ||
        plainLookup(name) != addressOf(kCores - 1)) {
        state.SkipWithError("differs from the address in the layout");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(Valen::HAL::getPldCoreAddress("fpga", name.c_str(), 1, -1, -1));
    }
}

void freadMemcmp(benchmark::State& state) {
    const std::string name = writeLayout();
    for (auto _ : state) {
        benchmark::DoNotOptimize(plainLookup(name));
    }
}

BENCHMARK(ours)->Name("core_lookup/ours");
BENCHMARK(freadMemcmp)->Name("core_lookup/fread_memcmp");

}  // namespace
