#pragma once

#include <string>

#include "Tools/boardsim/Models/PanelScreen.h"

namespace boardsim {

/// One event of the screen as the trace writes it: "screen frame 15360 bytes at 0",
/// "screen state 0x31 0x0a at 0".
std::string describe(const ScreenEvent& event);

}  // namespace boardsim
