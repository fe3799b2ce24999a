#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "Tools/boardinfo/Sections/Sections.h"
#include "Vl/Common/Files/DirectoryReader.h"
#include "Vl/HAL/Bus/I2CRegisteredDevice.h"

namespace boardinfo::sections {
namespace {

using Valen::I2CRegisteredDevice;

std::vector<std::string> registeredNames() {
    std::vector<std::string> names;
    Valen::DirectoryReader registry(I2CRegisteredDevice::getPath("").c_str());
    for (const char* name = registry.next(); name != nullptr; name = registry.next()) {
        names.emplace_back(name);
    }
    std::erase(names, ".");
    std::erase(names, "..");
    std::ranges::sort(names);
    return names;
}

Row rowOf(const std::string& name) {
    const Valen::I2CAddress device = I2CRegisteredDevice::getAddressOf(name.c_str());
    if (device.name[0] != '\0') {
        return answered(name, std::string(device.name)).with("kind", std::string("device"));
    }
    const int bus = I2CRegisteredDevice::getBusOf(name.c_str());
    if (bus >= 0) {
        return answered(name, "i2c-" + std::to_string(bus)).with("kind", std::string("bus"));
    }
    return failed(name);
}

}  // namespace

Section i2cNames(Board& /*board*/) {
    Section section{"names on I2C", Form::Found};
    for (const std::string& name : registeredNames()) {
        section.rows.push_back(rowOf(name));
    }
    return section;
}

}  // namespace boardinfo::sections
