#pragma once

#include "Tools/boardinfo/Report.h"

namespace boardinfo {
class Board;
}

/// What is asked of a board, a collector for each section of the report. They only read; what is not there is
/// told as such and asked no further. Nothing throws but for want of memory. One thread at a time.
namespace boardinfo::sections {

/// Who the card is: identity ROM, MAC addresses, 1-Wire chips, versions of the programmable devices.
Section identity(Board& board);
/// Where the board comes from, as its EEPROM tells.
Section versions(Board& board);
/// The cores of the programmable devices, in the order of their layouts.
Section fpgaCores(Board& board);
Section cpldCores(Board& board);
/// The chips on the 1-Wire buses.
Section oneWire(Board& board);
/// The names of I2C buses and devices.
Section i2cNames(Board& board);
/// The temperatures that the board's variant knows, with their limits.
Section temperatures(Board& board);
/// The temperatures that the kernel's drivers know.
Section cardSensors(Board& board);
Section expanders(Board& board);
/// The Ethernet PHYs on the FPGA's MDIO bus, and those of the two configuration ports.
Section mdioPhys(Board& board);
Section configPhys(Board& board);
/// The central sync block and its time code.
Section sync(Board& board);
/// The network interfaces and what they carry.
Section links(Board& board);

}  // namespace boardinfo::sections
