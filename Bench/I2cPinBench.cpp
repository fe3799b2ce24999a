// One pin of an I/O expander changes: what the driver adds to the kernel's own request. The bus is a
// descriptor without a device behind it, so that a request costs one system call and nothing hides the
// driver's share.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>

#include <cstdarg>
#include <cstdint>
#include <string_view>

#include "Vl/HAL/Chips/Sx1509b.h"

namespace {

constexpr int kBus = 3;
constexpr int kSlave = 0x3E;
constexpr std::uint8_t kDataA = 0x11;

/// What was last asked of the bus.
i2c_smbus_ioctl_data lastTransfer;
i2c_smbus_data lastData;

bool isBus(std::string_view path) {
    return path.starts_with("/dev/i2c-");
}

bool wasWritten(int value) {
    return lastTransfer.read_write == I2C_SMBUS_WRITE && lastTransfer.command == kDataA &&
           lastTransfer.size == I2C_SMBUS_BYTE_DATA && lastData.byte == value;
}

void ours(benchmark::State& state) {
    Valen::Sx1509b expander;
    // All reads give zeros, and so all levels are low at first.
    if (expander.init(kBus, kSlave, false) != 0 || !expander.setValueA(2, 1, false) || !wasWritten(0x04) ||
        !expander.setValueA(2, 0, false) || !wasWritten(0x00)) {
        state.SkipWithError("the pin was not written");
        return;
    }
    std::uint8_t level = 0;
    for (auto _ : state) {
        level ^= 1;
        benchmark::DoNotOptimize(expander.setValueA(2, level, false));
    }
}

void bareIoctl(benchmark::State& state) {
    const int bus = open("/dev/i2c-3", O_RDWR | O_CLOEXEC);
    std::uint8_t level = 0;
    for (auto _ : state) {
        level ^= 4;
        i2c_smbus_data data;
        data.byte = level;
        i2c_smbus_ioctl_data transfer = {I2C_SMBUS_WRITE, kDataA, I2C_SMBUS_BYTE_DATA, &data};
        benchmark::DoNotOptimize(ioctl(bus, I2C_SMBUS, &transfer));
    }
}

BENCHMARK(ours)->Name("sx1509b_pin/ours");
BENCHMARK(bareIoctl)->Name("sx1509b_pin/bare_ioctl");

}  // namespace

// The linker leads this program's calls of open and ioctl here.

extern "C" {

int __real_open(const char* path, int flags, ...);
int __real_ioctl(int descriptor, unsigned long code, ...);

int __wrap_open(const char* path, int flags, ...) {
    va_list list;
    va_start(list, flags);
    const auto mode = va_arg(list, unsigned int);
    va_end(list);
    return __real_open(isBus(path) ? "/dev/null" : path, flags, mode);
}

int __wrap_ioctl(int descriptor, unsigned long code, ...) {
    va_list list;
    va_start(list, code);
    void* argument = va_arg(list, void*);
    va_end(list);
    const int result = __real_ioctl(descriptor, code, argument);
    if (code == I2C_SMBUS) {
        lastTransfer = *static_cast<const i2c_smbus_ioctl_data*>(argument);
        if (lastTransfer.read_write == I2C_SMBUS_READ) {
            *lastTransfer.data = {};
        }
        lastData.byte = lastTransfer.data->byte;
        return 0;
    }
    return code == I2C_SLAVE ? 0 : result;
}
}
