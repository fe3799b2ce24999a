#pragma once

#include "Vl/HAL/Board/CPInterface.h"

/// The triple-speed Ethernet MAC core in the FPGA, which serves the user port. `base` is the byte offset of
/// the core's registers. One thread at a time.
/// Source: Intel's Triple-Speed Ethernet FPGA IP User Guide, "Configuration Register Space".
namespace Valen::HAL {

/// Resets the core's logic and waits for the end of that, at most 6 ms, sleeping 5 µs between looks.
/// @return false when it does not end, which is logged (CPCardInterface, DEBUG); as it never does without
///         registers.
bool tseMacReset(CPInterface& cp, unsigned base);

/// Sets the core up and starts it at 10 or 100 Mbit/s. Without registers nothing happens.
/// @param macHigh the last two bytes of the MAC address, the first of them in the lowest bits.
/// @param macLow  the first four bytes, likewise.
/// @param jumbo   frames of up to 9100 bytes instead of 1600; the FIFO thresholds stay as they are.
/// @param extra   lets the core's PCS speak SGMII, with auto-negotiation.
void tseMacConfigure(CPInterface& cp, unsigned base, unsigned macHigh, unsigned macLow, bool jumbo,
                     bool extra);

/// Runs the core at another speed; any that is not 10 or 1000 Mbit/s is 100 Mbit/s.
void tseMacSetSpeed(CPInterface& cp, unsigned base, CPInterface::EthSpeed speed);

}  // namespace Valen::HAL
