// Registers of the FPGA through the control processor, and as bare volatile memory.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "Tests/HAL/Board/TestBoard.h"
#include "Tests/HAL/LayoutBytes.h"

namespace {

constexpr std::size_t kSpace = 0x10000;
constexpr unsigned int kFirst = 0x1000;
constexpr std::size_t kWords = 1024;
constexpr unsigned int kBytes = kWords * sizeof(std::uint32_t);
using Words = std::array<std::uint32_t, kWords>;

/// Where both ways of reading put what they read: how it lies to the registers counts.
alignas(64) Words buffer;

/// A control processor with registers that all hold something else.
class Board : public TestBoard {
public:
    static std::unique_ptr<Board> make() {
        std::filesystem::create_directories("/sys/bus/avalon/devices/fpga");
        std::ofstream("/sys/bus/avalon/devices/fpga/layout", std::ios::binary)
            << core("registers", {1, kFirst});
        std::string bytes;
        for (std::size_t i = 0; i < kSpace; ++i) {
            bytes += static_cast<char>(i * 31 + i / 251);
        }
        std::ofstream("/dev/fpga", std::ios::binary) << bytes;
        return std::make_unique<Board>();
    }

    volatile std::uint32_t* registers() { return getCoreRegs("registers", 0).first; }
};

std::uint32_t sumOf(Board& board) {
    std::uint32_t sum = 0;
    for (unsigned int offset = kFirst; offset < kFirst + kBytes; offset += 4) {
        unsigned int value = 0;
        board.readFPGA(offset, value);
        sum = sum * 3 + value;
    }
    return sum;
}

std::uint32_t plainSumOf(const volatile std::uint32_t* registers) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < kWords; ++i) {
        sum = sum * 3 + registers[i];
    }
    return sum;
}

void plainRead(const volatile std::uint32_t* registers, Words& words) {
    for (std::size_t i = 0; i < kWords; ++i) {
        words[i] = registers[i];
    }
}

void wordRead(benchmark::State& state) {
    const auto board = Board::make();
    if (sumOf(*board) != plainSumOf(board->registers())) {
        state.SkipWithError("reads something else");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(sumOf(*board));
    }
}

void volatileRead(benchmark::State& state) {
    const auto board = Board::make();
    const volatile std::uint32_t* registers = board->registers();
    for (auto _ : state) {
        benchmark::DoNotOptimize(plainSumOf(registers));
    }
}

void readBytes(benchmark::State& state) {
    const auto board = Board::make();
    Words ours{};
    Words plain{};
    board->readFPGABytes(kFirst, ours.data(), kBytes);
    plainRead(board->registers(), plain);
    if (ours != plain) {
        state.SkipWithError("reads something else");
        return;
    }
    for (auto _ : state) {
        board->readFPGABytes(kFirst, buffer.data(), kBytes);
        benchmark::ClobberMemory();
    }
}

void wordLoop(benchmark::State& state) {
    const auto board = Board::make();
    const volatile std::uint32_t* registers = board->registers();
    for (auto _ : state) {
        plainRead(registers, buffer);
        benchmark::ClobberMemory();
    }
}

BENCHMARK(wordRead)->Name("cp_word_read/ours");
BENCHMARK(volatileRead)->Name("cp_word_read/volatile");
BENCHMARK(readBytes)->Name("cp_read_bytes_4k/ours");
BENCHMARK(wordLoop)->Name("cp_read_bytes_4k/word_loop");

}  // namespace
