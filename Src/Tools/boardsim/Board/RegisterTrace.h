#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Tools/boardsim/Host/RegisterTrap/TrapEvent.h"

namespace boardsim {

/// A datagram of the trap library as an event. Nothing when it is none, or of another version.
std::optional<TrapEvent> readTrapEvent(std::string_view datagram);

/// The event as the trace writes it: "fpga read 0x1004 32 0x00000000", offset in the register space, width in
/// bits, value; "screen seek 0".
std::string describe(const TrapEvent& event);

}  // namespace boardsim
