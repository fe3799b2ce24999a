#pragma once

#include <optional>
#include <string>
#include <utility>

#include "Tools/boardinfo/Report.h"

namespace boardinfo {
class Board;
}

/// Is it there at all? What the library's accessors do not tell: they fail either way.
namespace boardinfo::sections {

/// Whether there is a file, or a link, wherever it may lead.
bool exists(const std::string& path);

/// What it means that nothing came from something.
inline State silence(bool isPresent) {
    return isPresent ? State::Failed : State::NotPresent;
}

/// The row of something that answered or did not, and whether it is there in the latter case.
inline Row rowOf(std::string name, std::optional<Value> value, bool isPresent, std::string unit = "") {
    if (value) {
        return answered(std::move(name), *std::move(value), std::move(unit));
    }
    return {std::move(name), silence(isPresent)};
}

/// Whether the registers of an FPGA core can be read: failed when the layout has the core and the FPGA is
/// there, but not its registers.
State coreState(Board& board, const char* core);

/// Whether the registry of I2C names has a device.
bool isRegistered(const char* i2cDevice);

}  // namespace boardinfo::sections
