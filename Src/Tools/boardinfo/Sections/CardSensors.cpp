#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "Tools/boardinfo/Sections/Presence.h"
#include "Tools/boardinfo/Sections/Sections.h"
#include "Vl/Common/Files/Descriptor.h"
#include "Vl/HAL/Board/CPInterface.h"

namespace boardinfo::sections {
namespace {

using Valen::CPInterface;

/// As many as the library can name, of either.
constexpr unsigned kNumbers = 16;
constexpr double kStepsPerDegree = 1000;

std::string deviceDirectory(unsigned hwmon) {
    return "/sys/class/hwmon/hwmon" + std::to_string(hwmon) + "/device";
}

Row rowOf(unsigned hwmon, unsigned sensor) {
    const CPInterface::therm_entry entry{static_cast<std::uint8_t>(hwmon & 0xF),
                                         static_cast<std::uint8_t>(sensor & 0xF)};
    int descriptor = -1;
    CPInterface::openTherm(&entry, &descriptor, 1);
    const Valen::Descriptor file(descriptor);
    std::string name = "hwmon" + std::to_string(hwmon) + " temp" + std::to_string(sensor);
    int value = 0;
    if (!CPInterface::gettemp(value, file.get())) {
        return failed(std::move(name));
    }
    return answered(std::move(name), value / kStepsPerDegree, "°C");
}

}  // namespace

Section cardSensors(Board& /*board*/) {
    Section section{"card sensors", Form::Found};
    for (unsigned hwmon = 0; hwmon < kNumbers; ++hwmon) {
        const std::string directory = deviceDirectory(hwmon);
        if (!exists(directory)) {
            continue;
        }
        for (unsigned sensor = 0; sensor < kNumbers; ++sensor) {
            if (exists(directory + "/temp" + std::to_string(sensor) + "_input")) {
                section.rows.push_back(rowOf(hwmon, sensor));
            }
        }
    }
    return section;
}

}  // namespace boardinfo::sections
