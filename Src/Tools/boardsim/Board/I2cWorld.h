#pragma once

#include "Tools/boardsim/Board/I2cDescription.h"
#include "Tools/boardsim/Host/WorldPlan.h"

namespace boardsim {

/// Plans what a program finds of I2C beside the files that act: the kernel's directories of buses and chips,
/// and the registry, a directory of links that carry the names of buses and chips.
void planI2c(WorldPlan& plan, const I2cDescription& i2c);

}  // namespace boardsim
