#include "Vl/HAL/Bus/SPISlave.h"

#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

namespace Valen {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDevices = "/sys/bus/avalon/devices/";
constexpr std::string_view kNamePrefix = "spi";
constexpr int kAnyChipSelect = -1;

bool isNamedSpi(std::string_view name) {
    return name.starts_with(kNamePrefix);
}

/// "spi1.0" has chip select 0, "spi1.00" as well; "spi1", "spi1." and "spi1.0a" have none.
bool hasChipSelect(std::string_view name, int wanted) {
    const std::size_t point = name.find('.');
    if (point == std::string_view::npos) {
        return false;
    }
    const std::string_view digits = name.substr(point + 1);
    unsigned int number = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number);
    if (error != std::errc() || end != digits.end()) {
        return false;
    }
    return wanted == kAnyChipSelect || std::cmp_equal(number, wanted);
}

fs::path findDevice(const fs::path& directory, int chipSelect) {
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        // The type comes with the listing: only symbolic links cost a system call here.
        if (!entry.is_directory()) {
            continue;
        }
        const fs::path name = entry.path().filename();
        if (isNamedSpi(name.native()) && hasChipSelect(name.native(), chipSelect)) {
            return entry.path();
        }
    }
    return {};
}

fs::path findMaster(const fs::path& masters) {
    for (const fs::directory_entry& entry : fs::directory_iterator(masters)) {
        if (isNamedSpi(entry.path().filename().native())) {
            return entry.path();
        }
    }
    return {};
}

fs::path findBelowCore(const fs::path& core, int chipSelect) {
    if (fs::path device = findDevice(core, chipSelect); !device.empty()) {
        return device;
    }
    const fs::path master = findMaster(core / "spi_master");
    return master.empty() ? master : findDevice(master, chipSelect);
}

}  // namespace

std::filesystem::path SPISlave::open(const char* name, int chipSelect) {
    try {
        return findBelowCore(fs::path(kDevices) += name, chipSelect);
    } catch (const fs::filesystem_error&) {
        return {};
    }
}

}  // namespace Valen
