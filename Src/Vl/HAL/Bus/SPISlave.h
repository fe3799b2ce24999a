#pragma once

#include <filesystem>

namespace Valen {

/// Finds the sysfs directories of SPI devices that hang off an SPI master core in the FPGA, so that the
/// attribute files of their kernel drivers can be opened. No state; any thread may use it.
class SPISlave {
public:
    /// @param name       the FPGA core's device on the platform bus, "oled_spi" for example.
    /// @param chipSelect the number behind the point in the device's name ("spi1.0"); -1 takes any.
    /// @return the device's directory: the first match that the file system lists, in the core's own
    ///         directory or else in its SPI master's. Empty when there is none, or when a directory or any
    ///         entry on the way to it cannot be examined. Nothing is logged; file-system errors do not leave
    ///         as exceptions.
    /// Source: the kernel's SPI core, which names devices spi<bus>.<chip select> below spi_master/spi<bus>.
    static std::filesystem::path open(const char* name, int chipSelect);
};

}  // namespace Valen
