#pragma once

#include <memory>

namespace Valen {

class ADVInterface;

/// Opens the video chip that is the SPI device of the FPGA core "spi_videosync_out", whatever its chip
/// select.
/// @return a new accessor; empty, with a log line, when there is no such device. Any thread may call.
std::shared_ptr<ADVInterface> openVideoChipOnSpi();

/// Opens the video chip that has this name in the I2C registry.
/// @return a new accessor, never empty; when it could not be opened there is a log line and its accesses
///         fail. Any thread may call.
std::shared_ptr<ADVInterface> openVideoChipOnI2c(const char* name);

}  // namespace Valen
