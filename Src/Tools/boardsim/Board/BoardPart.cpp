#include "Tools/boardsim/Board/BoardPart.h"

#include <algorithm>
#include <array>

namespace boardsim {
namespace {

/// In the order of the enumeration.
constexpr std::array<std::string_view, kBoardParts> kNames{
    "screen", "spi",    "panel-registers", "layout", "fpga", "gpio",
    "log",    "font",   "font-directory",  "w1",     "cpld", "mii",
    "i2c",    "rom",    "hwmon",           "eeprom", "sync", "network",
    "inband", "pattern"};

}  // namespace

std::string_view partName(BoardPart part) {
    return kNames[static_cast<std::size_t>(part)];
}

std::optional<BoardPart> partNamed(std::string_view name) {
    const auto found = std::find(kNames.begin(), kNames.end(), name);
    if (found == kNames.end()) {
        return std::nullopt;
    }
    return static_cast<BoardPart>(found - kNames.begin());
}

std::string allPartNames() {
    std::string names;
    for (const std::string_view name : kNames) {
        names.append(names.empty() ? "" : ", ").append(name);
    }
    return names;
}

}  // namespace boardsim
