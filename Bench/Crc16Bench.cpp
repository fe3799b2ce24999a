// The CRC of an EEPROM record and of a large block, against the usual table-driven one.
#include <benchmark/benchmark.h>

#include <boost/crc.hpp>
#include <random>
#include <vector>

#include "Vl/Common/Identity/CRC16.h"

namespace {

constexpr std::size_t kRecord = 1024;
constexpr std::size_t kBlock = 1024 * 1024;

using Bytes = std::vector<unsigned char>;

Bytes randomBytes(std::size_t count) {
    std::mt19937 random(1);
    Bytes bytes(count);
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(random());
    }
    return bytes;
}

unsigned int boostCrc(const Bytes& bytes) {
    boost::crc_optimal<16, 0x1021, 0, 0, false, false> crc;
    crc.process_bytes(bytes.data(), bytes.size());
    return crc.checksum();
}

unsigned int ourCrc(const Bytes& bytes) {
    return Valen::CRC16::CalcCRC(bytes.data(), static_cast<int>(bytes.size()), 0);
}

template <unsigned int (*Crc)(const Bytes&), std::size_t Size>
void crc(benchmark::State& state) {
    const Bytes bytes = randomBytes(Size);
    if (ourCrc(bytes) != boostCrc(bytes)) {
        state.SkipWithError("wrong CRC");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(Crc(bytes));
        benchmark::ClobberMemory();
    }
}

BENCHMARK(crc<ourCrc, kRecord>)->Name("crc16_1k/ours");
BENCHMARK(crc<boostCrc, kRecord>)->Name("crc16_1k/boost");
BENCHMARK(crc<ourCrc, kBlock>)->Name("crc16_1m/ours");
BENCHMARK(crc<boostCrc, kBlock>)->Name("crc16_1m/boost");

}  // namespace
