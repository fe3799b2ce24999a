#include "Tools/boardsim/Models/PanelRegisters.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace boardsim {
namespace {

/// Where a key counts, and in which direction.
struct Counter {
    PanelKey key;
    std::string_view name;
    unsigned shift;
    std::uint32_t mask;
    std::uint32_t increment;
};

constexpr std::array<Counter, 5> kKeys{{
    {PanelKey::Left, "left", 0, 0x0F, 1},
    {PanelKey::Right, "right", 4, 0x0F, 1},
    {PanelKey::Red, "red", 8, 0x0F, 1},
    {PanelKey::Clockwise, "cw", 16, 0xFF, 1},
    {PanelKey::CounterClockwise, "ccw", 16, 0xFF, ~0U},
}};

constexpr bool inOrder() {
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
        if (kKeys[i].key != static_cast<PanelKey>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(inOrder());

constexpr std::uint32_t kLedMask = 0x3;

const Counter& counterOf(PanelKey key) {
    return kKeys[static_cast<std::size_t>(key)];
}

}  // namespace

std::string_view keyName(PanelKey key) {
    return counterOf(key).name;
}

std::optional<PanelKey> keyNamed(std::string_view name) {
    const auto found =
        std::find_if(kKeys.begin(), kKeys.end(), [&](const Counter& c) { return c.name == name; });
    if (found == kKeys.end()) {
        return std::nullopt;
    }
    return found->key;
}

void PanelRegisters::operate(PanelKey key, unsigned times) {
    const Counter& counter = counterOf(key);
    const std::uint32_t count = (counters_ >> counter.shift) + counter.increment * times;
    counters_ &= ~(counter.mask << counter.shift);
    counters_ |= (count & counter.mask) << counter.shift;
}

RegisterValue PanelRegisters::read(std::uint32_t offset, unsigned width) {
    if (width == 4 && offset == kLed) {
        return {led_};
    }
    if (width == 4 && offset == kCounters) {
        return {counters_};
    }
    return {0, ""};
}

Refusal PanelRegisters::write(std::uint32_t offset, unsigned width, std::uint64_t value) {
    if (offset != kLed || width != 4 || value > kLedMask) {
        return "";
    }
    led_ = static_cast<std::uint32_t>(value);
    return std::nullopt;
}

}  // namespace boardsim
