#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Tools/boardsim/Models/FaultSchedule.h"

namespace boardsim {

/// Something that a device does wrong on demand. What devices and actions there are, and what an action's
/// value means, is known to the board.
struct Fault {
    std::string kind;    ///< of the device: "i2c"
    std::string device;  ///< its name on the board: "fan@0x48"
    std::string action;  ///< what goes wrong: "nack"
    std::string value;   ///< of the action; empty when there is none
    FaultSchedule schedule;
    std::string text;  ///< as it was given, for messages
};

/// Reads "KIND:DEVICE:ACTION[=VALUE][:after=N][:times=N]".
/// @throws std::invalid_argument whose text says what is wrong with it.
Fault parseFault(const std::string& text);

/// The value of an action as a number, decimal or hexadecimal with "0x", up to `largest`.
/// @throws std::invalid_argument when it is none.
std::uint64_t numberOf(const Fault& fault, std::uint64_t largest);

/// Reads all of `digits` as a number, decimal or hexadecimal with "0x". Nothing when it is none.
std::optional<std::uint64_t> wholeNumber(std::string_view digits);

}  // namespace boardsim
