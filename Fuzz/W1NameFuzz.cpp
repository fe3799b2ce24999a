// Directory names of 1-Wire slaves: what is taken for one names the same slave again.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "Fuzz/Require.h"
#include "Vl/HAL/Bus/W1Util.h"

using Valen::HAL::W1Util;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto slave = W1Util::parseName({reinterpret_cast<const char*>(data), size});
    if (slave) {
        require(slave->family() != 0 && slave->serial() != 0 && (slave->value & 0xFF) == 0);
        require(W1Util::parseName(slave->name()) == slave);
    }
    return 0;
}
