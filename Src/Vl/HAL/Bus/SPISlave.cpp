#include "Vl/HAL/Bus/SPISlave.h"

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "Vl/Common/Files/DirectoryReader.h"

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
    if (error == std::errc::invalid_argument || end != digits.end()) {
        return false;
    }
    return wanted == kAnyChipSelect || (error == std::errc() && std::cmp_equal(number, wanted));
}

/// What a search finds: the path, an empty one when there is none, nothing at all when the file system fails.
using Finding = std::optional<fs::path>;

Finding findDevice(const fs::path& directory, int chipSelect) {
    DirectoryReader entries(directory.c_str());
    while (const char* name = entries.next()) {
        const std::optional<bool> isDirectory = entries.isDirectory();
        if (!isDirectory) {
            return std::nullopt;
        }
        if (*isDirectory && isNamedSpi(name) && hasChipSelect(name, chipSelect)) {
            return directory / name;
        }
    }
    return entries.failed() ? Finding() : fs::path();
}

Finding findMaster(const fs::path& masters) {
    DirectoryReader entries(masters.c_str());
    while (const char* name = entries.next()) {
        if (isNamedSpi(name)) {
            return masters / name;
        }
    }
    return entries.failed() ? Finding() : fs::path();
}

Finding findBelowCore(const fs::path& core, int chipSelect) {
    Finding device = findDevice(core, chipSelect);
    if (!device || !device->empty()) {
        return device;
    }
    Finding master = findMaster(core / "spi_master");
    return !master || master->empty() ? master : findDevice(*master, chipSelect);
}

}  // namespace

std::filesystem::path SPISlave::open(const char* name, int chipSelect) {
    return findBelowCore(fs::path(kDevices) += name, chipSelect).value_or(fs::path());
}

}  // namespace Valen
