#pragma once

#include <string>

#include "Tools/boardsim/Models/MdioBus.h"

namespace boardsim {

/// One frame on the MDIO bus as the trace writes it: "mdio read phy 1 reg 17 0xac00",
/// "mdio read phy 7 reg 2 0xffff, no answer".
std::string describe(const MdioFrame& frame);

}  // namespace boardsim
