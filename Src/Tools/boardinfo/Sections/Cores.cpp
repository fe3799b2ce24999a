#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Tools/boardinfo/Sections/Presence.h"
#include "Tools/boardinfo/Sections/Sections.h"
#include "Tools/boardinfo/ValueText.h"
#include "Vl/HAL/Fpga/CoreLayout.h"
#include "Vl/HAL/Fpga/FPGAInterface.h"
#include "Vl/HAL/Fpga/LayoutSource.h"
#include "Vl/HAL/Fpga/cpld.h"

namespace boardinfo::sections {
namespace {

using Valen::HAL::LayoutMemory;

constexpr int kWordDigits = 8;

/// Reads the record that the layout stands before. Nothing when the layout ends in it.
std::optional<Row> readCore(LayoutMemory& layout, std::string_view name) {
    Row core{std::string(name), State::Ok};
    std::uint16_t words = 0;
    if (!layout.read(words)) {
        return std::nullopt;
    }
    std::vector<std::string> addresses;
    for (int i = 0; i < words; ++i) {
        std::uint32_t word = 0;
        if (!layout.read(word)) {
            return std::nullopt;
        }
        if (i == 0) {
            core.with("version", hexText(word, kWordDigits));
        } else {
            addresses.push_back(hexText(word & Valen::HAL::kCoreAddressMask, kWordDigits));
        }
    }
    core.with("addresses", std::move(addresses));
    return core;
}

Section coresOf(const char* sectionName, const char* device) {
    Section section{sectionName, Form::Found};
    if (!exists(std::string("/sys/bus/avalon/devices/") + device + "/layout")) {
        return section;
    }
    const auto bytes = Valen::HAL::readLayout(device);
    if (!bytes) {
        section.rows.push_back(failed("layout"));
        return section;
    }
    LayoutMemory layout(*bytes);
    for (std::string_view name; layout.nextName(name);) {
        const auto core = readCore(layout, name);
        section.rows.push_back(core ? *core : failed(std::string(name)));
        if (!core) {
            break;
        }
    }
    return section;
}

}  // namespace

Section fpgaCores(Board& /*board*/) {
    return coresOf("FPGA cores", Valen::HAL::FPGAInterface::device);
}

Section cpldCores(Board& /*board*/) {
    return coresOf("CPLD cores", Valen::HAL::cpld::deviceName);
}

}  // namespace boardinfo::sections
