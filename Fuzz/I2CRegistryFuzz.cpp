// Links of any target in the I2C registry. The linker leads the registry's readlink here.
#include <sys/types.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Fuzz/Require.h"
#include "Vl/HAL/Bus/I2CRegisteredDevice.h"
#include "Vl/HAL/Bus/I2CfindBus.h"

using Valen::I2CAddress;
using Valen::I2CRegisteredDevice;

namespace {

constexpr std::size_t kLongestTarget = 127;

std::string_view target;

}  // namespace

extern "C" ssize_t __wrap_readlink(const char* path, char* buffer, std::size_t size) {
    require(std::string_view(path).starts_with("/tmp/i2c/x"));
    return target.empty() ? -1 : static_cast<ssize_t>(target.copy(buffer, size));
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    target = {reinterpret_cast<const char*>(data), size};
    const bool readable = !target.empty() && size <= kLongestTarget;

    const int bus = I2CRegisteredDevice::getBusOf("x");
    require(bus >= -1 && (readable || bus == -1));
    require(!readable || target.find('-') != std::string_view::npos || bus == 0);
    require(Valen::I2CfindBus("x") == bus && Valen::I2CfindBus("x", 1) == bus);

    const I2CAddress place = I2CRegisteredDevice::getAddressOf("x");
    const std::string name(place.name, std::find(place.name, std::end(place.name), '\0'));
    require(name.size() < sizeof place.name);
    require(name.empty() || (readable && target.find("/" + name) != std::string_view::npos));
    const bool isWhole = !name.empty() && name.size() + 1 < sizeof place.name;
    require(!isWhole || I2CAddress(name.c_str()).bus == place.bus);
    require(readable || (place.bus == I2CAddress::kNone && place.address == I2CAddress::kNone));
    return 0;
}
