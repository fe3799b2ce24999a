#pragma once

#include <string>

namespace Valen {

/// Finds a bus in the I2C registry; see I2CRegisteredDevice::getBusOf.
/// @return the bus's number, or -1.
int I2CfindBus(const std::string& name);

/// The same for one of several that are numbered: "qsfp" and 0 look up "qsfp0".
int I2CfindBus(const std::string& name, unsigned index);

}  // namespace Valen
