#include "Tests/HAL/Board/VariantWorld.h"

#include <sys/mount.h>

#include <filesystem>

#include "Tools/boardsim/Host/Mounts.h"

namespace {

namespace fs = std::filesystem;

struct Core {
    const char* name;
    std::uint32_t address;
};

// The low six bits of an address are something else.
constexpr Core kCores[] = {
    {"oled_io_spi", 0x1005},
    {"subsys_hps_oled_io_spi", 0x2001},
    {"misc_pio", 0x3002},
    {"ethernet_mdio", 0x3041},
    {"subsys_hps_pio_temp_fpga", 0x3081},
    {"subsys_hps_pio_temp_tile0", 0x30C2},
    {"subsys_hps_pio_temp_tile1", 0x3104},
};

struct Link {
    const char* name;
    const char* target;
};

constexpr Link kLinks[] = {
    {"fan", "/dev/i2c-1"},
    {"syn_eth", "/dev/i2c-2"},
    {"qsfp0_0", "/dev/i2c-3"},
    {"qsfp0_1", "/dev/i2c-4"},
    {"qsfp1_0", "/dev/i2c-5"},
    {"qsfp1_1", "/dev/i2c-6"},
    {"sdi_temp", "/sys/bus/i2c/devices/7-0048"},
    {"fan_radial_temp", "/sys/bus/i2c/devices/1-0049"},
    {"fan_oled_temp", "/sys/bus/i2c/devices/1-004a"},
    {"eth_temp", "/sys/bus/i2c/devices/2-004b"},
    {"led_sync", "/sys/bus/i2c/devices/2-003f"},
    {"eth_led", "/sys/bus/i2c/devices/2-0021"},
    {"video_enc", "/sys/bus/i2c/devices/7-002a"},
    {"psu", "/sys/bus/i2c/devices/7-005b"},
};
constexpr int kBuses = 7;

void writeLayoutWithout(const std::string& name) {
    std::string bytes;
    for (const Core& row : kCores) {
        if (row.name != name) {
            bytes += core(row.name, {1, row.address});
        }
    }
    support::PrivateWorld::write("/sys/bus/avalon/devices/fpga/layout", bytes);
}

}  // namespace

VariantWorld::VariantWorld() {
    boardsim::coverDirectory("/sys/class", boardsim::keepNothing);
    support::PrivateWorld::write("/dev/gpio", "");
    support::PrivateWorld::write("/sys/class/gpio/gpiochip192/label", "oled_pio\n");
    support::PrivateWorld::write("/sys/class/gpio/gpiochip192/base", "192\n");
    writeLayoutWithout("");
    support::PrivateWorld::write(screenOf("oled_spi"), "");
    support::PrivateWorld::write(screenOf("subsys_hps_oled_spi"), "");
    for (int bus = 1; bus <= kBuses; ++bus) {
        support::PrivateWorld::write("/dev/i2c-" + std::to_string(bus), "");
    }
    fs::create_directories("/tmp/i2c");
    for (const Link& row : kLinks) {
        link(row.name, row.target);
    }
}

VariantWorld::~VariantWorld() {
    umount2("/sys/class", MNT_DETACH);
}

std::string VariantWorld::screenOf(const std::string& device) {
    return "/sys/bus/avalon/devices/" + device + "/spi_master/spi1/spi1.0/screen";
}

void VariantWorld::removeCore(const std::string& name) {
    writeLayoutWithout(name);
}

void VariantWorld::link(const std::string& name, const std::string& target) {
    unlink(name);
    fs::create_symlink(target, "/tmp/i2c/" + name);
}

void VariantWorld::unlink(const std::string& name) {
    fs::remove("/tmp/i2c/" + name);
}

void VariantWorld::removeEverything() {
    for (const char* path : {"/dev/fpga", "/dev/gpio", "/sys/class/gpio", "/tmp/i2c"}) {
        fs::remove_all(path);
    }
    writeLayout("fpga", core("other", {1, 0x40}));
}

int VariantWorld::descriptors() {
    const fs::directory_iterator all("/proc/self/fd");
    return static_cast<int>(std::distance(begin(all), end(all)));
}
