// A whole board object is built and taken down, on buses that answer at once. The peer makes the same system
// calls and nothing else; what the two differ by is the object's own work.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "Tests/HAL/LayoutBytes.h"
#include "Vl/HAL/Board/OrcaInterface.h"

namespace {

namespace fs = std::filesystem;

using Valen::OrcaInterface;

constexpr double kMostMicroseconds = 1000;  // in user mode

constexpr const char* kLayout = "/sys/bus/avalon/devices/fpga/layout";
constexpr std::size_t kRegisterBytes = 0x10000;
constexpr std::uint32_t kFirstCore = 0x40;  // "cardid"

/// Where the registry's links really are; see readlink below.
constexpr const char* kLinks = "/sys/bus/i2c-registry/";

struct Link {
    const char* name;
    const char* target;
};

constexpr Link kRegistry[] = {
    {"sdi_temp", "/sys/bus/i2c/devices/0-0048"},
    {"fan", "/dev/i2c-1"},
    {"syn_eth", "/dev/i2c-2"},
    {"qsfp0_0", "/dev/i2c-3"},
    {"qsfp0_1", "/dev/i2c-4"},
    {"qsfp1_0", "/dev/i2c-5"},
    {"qsfp1_1", "/dev/i2c-6"},
    {"led_sync", "/sys/bus/i2c/devices/2-003f"},
    {"eth_led", "/sys/bus/i2c/devices/2-003e"},
};

void makeWorld() {
    std::string layout;
    std::uint32_t address = 0;  // cores lie one behind the other
    for (const char* name :
         {"cardid", "subsys_hps_central_sync", "misc_pio", "ethernet_mdio", "subsys_hps_pio_temp_fpga",
          "subsys_hps_pio_temp_tile0", "subsys_hps_pio_temp_tile1"}) {
        layout += core(name, {1, address += kFirstCore});
    }
    fs::create_directories(fs::path(kLayout).parent_path());
    std::ofstream(kLayout, std::ios::binary) << layout;
    fs::create_directories(kLinks);
    for (const Link& link : kRegistry) {
        if (!fs::is_symlink(std::string(kLinks) + link.name)) {
            fs::create_symlink(link.target, std::string(kLinks) + link.name);
        }
    }
    std::ofstream("/dev/gpio").flush();
    std::ofstream("/dev/fpga", std::ios::app).flush();
    if (fs::file_size("/dev/fpga") < kRegisterBytes) {
        fs::resize_file("/dev/fpga", kRegisterBytes);
    }
}

/// All chips read as zeros: the sync expander's directions are then what they should be, a cage's are not.
bool isBuilt(OrcaInterface& board) {
    int celsius = 0;
    int limit = 0;
    return board.getFPGATemperature(0, celsius, limit) && board.getFPGATemperature(2, celsius, limit) &&
           board.getSyncIo()->detectReset() == 0 && board.getQsfpIo(1, 1)->detectReset() == 1;
}

/// Unmaps the registers, which stay mapped when a board is gone: a process has only so many mappings.
void forget(volatile std::uint32_t* cardId) {
    auto* start = reinterpret_cast<volatile char*>(cardId) - kFirstCore;
    munmap(const_cast<char*>(start), kRegisterBytes);
}

double userMicroseconds() {
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec) * 1e6 + static_cast<double>(usage.ru_utime.tv_usec);
}

void ours(benchmark::State& state) {
    makeWorld();
    {
        OrcaInterface board(nullptr);
        if (!isBuilt(board)) {
            state.SkipWithError("the board is not built");
            return;
        }
    }
    const double start = userMicroseconds();
    for (auto _ : state) {
        volatile std::uint32_t* cardId = nullptr;
        {
            OrcaInterface board(nullptr);
            state.PauseTiming();
            cardId = board.getCoreRegs("cardid", 0).first;
            state.ResumeTiming();
        }
        state.PauseTiming();
        forget(cardId);
        state.ResumeTiming();
    }
    const double each = (userMicroseconds() - start) / static_cast<double>(state.iterations());
    state.counters["user_us"] = each;
    if (each > kMostMicroseconds) {
        state.SkipWithError("more than a millisecond outside system calls");
    }
}

void readLayout() {
    std::array<char, 8192> bytes;
    const int file = open(kLayout, O_RDONLY | O_CLOEXEC);
    const ssize_t size = read(file, bytes.data(), bytes.size());
    benchmark::DoNotOptimize(read(file, bytes.data() + size, bytes.size() - static_cast<std::size_t>(size)));
    close(file);
}

void mapRegisters() {
    const int file = open("/dev/fpga", O_RDWR | O_CLOEXEC);
    const auto size = static_cast<std::size_t>(lseek(file, 0, SEEK_END));
    lseek(file, 0, SEEK_SET);
    void* registers = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    munmap(registers, size);
    close(file);
}

void transfer(int bus, std::uint8_t direction, std::uint32_t size, int count) {
    i2c_smbus_data data = {};
    i2c_smbus_ioctl_data request = {direction, 0, size, &data};
    for (int i = 0; i < count; ++i) {
        ioctl(bus, I2C_SMBUS, &request);
    }
}

/// Opens an expander, reads its two words and makes so many writes. @return the bus.
int setUpExpander(const char* bus, int writes) {
    const int descriptor = open(bus, O_RDWR | O_CLOEXEC);
    ioctl(descriptor, I2C_SLAVE, 0x3E);
    transfer(descriptor, I2C_SMBUS_READ, I2C_SMBUS_WORD_DATA, 2);
    transfer(descriptor, I2C_SMBUS_WRITE, I2C_SMBUS_BYTE_DATA, writes);
    return descriptor;
}

void bareCalls(benchmark::State& state) {
    makeWorld();
    constexpr int kLayoutReads = 6;
    for (auto _ : state) {
        const int gpio = open("/dev/gpio", O_RDONLY | O_CLOEXEC);
        mapRegisters();
        for (int i = 0; i < kLayoutReads; ++i) {
            readLayout();
        }
        for (const Link& link : kRegistry) {
            std::array<char, 128> target;
            benchmark::DoNotOptimize(
                readlink((std::string(kLinks) + link.name).c_str(), target.data(), target.size()));
        }
        const int sensors[] = {open("/dev/i2c-0", O_RDWR | O_CLOEXEC), open("/dev/i2c-1", O_RDWR | O_CLOEXEC),
                               open("/dev/i2c-2", O_RDWR | O_CLOEXEC)};
        const int expanders[] = {setUpExpander("/dev/i2c-3", 10), setUpExpander("/dev/i2c-4", 10),
                                 setUpExpander("/dev/i2c-5", 10), setUpExpander("/dev/i2c-6", 10),
                                 setUpExpander("/dev/i2c-2", 8),  setUpExpander("/dev/i2c-2", 3)};
        for (const int descriptor : sensors) {
            close(descriptor);
        }
        for (const int descriptor : expanders) {
            close(descriptor);
        }
        close(gpio);
    }
}

BENCHMARK(ours)->Name("construct_orca/ours");
BENCHMARK(bareCalls)->Name("construct_orca/bare_calls");

}  // namespace

// The linker leads this program's calls of readlink here: the registry is not below "/tmp/", which is
// everybody's.

extern "C" {

ssize_t __real_readlink(const char* path, char* buffer, std::size_t size);

ssize_t __wrap_readlink(const char* path, char* buffer, std::size_t size) {
    const std::string name = path;
    const std::string registry = "/tmp/i2c/";
    return name.starts_with(registry)
               ? __real_readlink((kLinks + name.substr(registry.size())).c_str(), buffer, size)
               : __real_readlink(path, buffer, size);
}
}
