#pragma once

#include <filesystem>

#include "Vl/HAL/Bus/I2CAddress.h"

namespace Valen {

/// The registry by which I2C buses and devices are found by name: a directory of symbolic links, "/tmp/i2c/",
/// which the platform makes at its start and this only reads. A bus is a link to its device ("/dev/i2c-2"), a
/// device a link to its directory in sysfs (".../i2c-3/3-0050"). A name may lead on behind a link
/// ("eeprom/eeprom"). Nothing is logged; any thread may ask. Links longer than 127 characters are not read.
class I2CRegisteredDevice {
public:
    /// @return the number behind the last hyphen of the link's target; 0 for a target without a hyphen; -1
    ///         when there is no such link, or no digit behind the hyphen, or a number that is no int.
    static int getBusOf(const char* name);

    /// @return the place that the last component of the link's target tells, slashes at its end left out. Its
    ///         name is empty for a device that is not registered; bus and address are then I2CAddress::kNone,
    ///         but for what was read before the component turned out not to tell a place: the bus alone, 0
    ///         where it has no digit.
    static I2CAddress getAddressOf(const char* name);

    /// @return the link itself, whether or not it exists.
    static std::filesystem::path getPath(const char* name);
};

}  // namespace Valen
