#pragma once

#include <functional>
#include <string>

#include "Tools/boardsim/Host/ActingFile.h"

namespace boardsim {

/// Takes a line for the trace.
using Tell = std::function<void(const std::string& line)>;

/// The same calls, each told when it has been answered: "w1 2d-00000a1b2c3d/eeprom read 18 bytes at 0",
/// "w1 w1_bus_master1/w1_master_search write 0x31 0x0a at 0", "gpio gpio480/value refused write 0x31 at 0:
/// Operation not permitted". Longer writes are told by their size.
/// @param name what the file is called in the trace.
FileCalls traced(const std::string& name, FileCalls calls, const Tell& tell);

}  // namespace boardsim
