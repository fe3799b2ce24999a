// Any text as a place on the I2C buses, read over the place that was there before.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "Fuzz/Require.h"
#include "Vl/HAL/Bus/I2CAddress.h"

using Valen::I2CAddress;

namespace {

std::string textOf(const I2CAddress& place) {
    char text[32];
    std::snprintf(text, sizeof text, "%u-%04x", place.bus, place.address);
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    I2CAddress place("3-0050");
    place.parse(text);
    const std::string name = place.name;
    require(name.size() < sizeof place.name);
    if (text.find('\0') == std::string::npos) {
        require(name == "3-0050" || name == text.substr(0, name.size()));
        const I2CAddress constructed(text.c_str());
        require(constructed.name[0] == '\0' || name == constructed.name);
    }
    const std::string canonical = textOf(place);
    const I2CAddress again(canonical.c_str());
    require(again.bus == place.bus && again.address == place.address &&
            again.name == canonical.substr(0, 15));
    return 0;
}
