#pragma once

#include "Tools/boardsim/Host/RegisterTrap/X86/Instruction.h"

namespace boardsim::X86 {

/// The instructions that can be emulated. @return the row of a Capstone instruction number, or null
const Operation* findOperation(unsigned id) noexcept;

}  // namespace boardsim::X86
