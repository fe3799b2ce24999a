#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/Layout.h"
#include "Tools/boardsim/Models/PanelScreen.h"

namespace boardsim {

/// What a board consists of, without saying how a program reaches it.
struct BoardDescription {
    std::string name;
    std::size_t fpgaBytes = 0;  ///< size of the FPGA's register space
    std::vector<Core> cores{};  ///< in the order of the layout file

    // The front panel.
    PanelGeometry panel{};
    std::string panelSpiCore{};       ///< the SPI master that the screen hangs on
    std::string panelRegisterCore{};  ///< the block of buttons, encoder and LED
    std::string panelSpiDevice{};     ///< bus and chip select, "1.0"

    /// Byte offset of the panel's registers in the register space.
    std::uint32_t panelRegisters() const;

    /// The directory of the screen's SPI device.
    std::string panelDirectory() const;
};

/// Where the kernel shows the programmable devices and their cores.
inline constexpr const char* kBusDevices = "/sys/bus/avalon/devices/";

/// The built-in board.
const BoardDescription& orcaBoard();

}  // namespace boardsim
