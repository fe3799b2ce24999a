#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Tools/boardsim/Board/I2cDescription.h"
#include "Tools/boardsim/Board/Layout.h"
#include "Tools/boardsim/Board/NetworkDescription.h"
#include "Tools/boardsim/Board/PhyParts.h"
#include "Tools/boardsim/Board/StatusDescription.h"
#include "Tools/boardsim/Board/W1Description.h"
#include "Tools/boardsim/Models/GpioBlock.h"
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

    // Beside the FPGA.
    std::vector<W1BusPart> w1Buses{};  ///< the first is number 1
    std::vector<GpioChip> gpioChips{};
    std::vector<MiiPart> miiPorts{};
    std::vector<Core> cpldCores{};  ///< of the second programmable device, in the order of its layout file
    std::vector<std::uint32_t> cpld{};  ///< its registers from address 0, as words

    // Cores whose registers act.
    std::string mdioCore{};  ///< the master of the MDIO bus
    std::vector<MdioPhy> phys{};
    std::string macCore{};        ///< a triple-speed MAC
    std::string spiMasterCore{};  ///< an SPI master without a kernel driver; a word comes back with the next

    // The video synchronisation chip, whose registers are a file.
    std::string videoSpiCore{};    ///< the SPI master that it hangs on
    std::string videoSpiDevice{};  ///< bus and chip select

    I2cDescription i2c{};

    // Cores of the FPGA that tell something by themselves.
    std::optional<SyncPart> sync{};
    std::optional<MiscPart> misc{};
    std::vector<TemperaturePart> temperatures{};

    // Network interfaces that are no ordinary ports.
    std::optional<InbandPart> inband{};
    std::optional<PatternPart> pattern{};

    /// Byte offset of a core of the board in the register space.
    std::uint32_t addressOf(std::string_view core) const;

    std::uint32_t panelRegisters() const { return addressOf(panelRegisterCore); }

    /// The directory of the screen's SPI device.
    std::string panelDirectory() const { return spiDirectory(panelSpiCore, panelSpiDevice); }

    /// The directory of the video chip's SPI device.
    std::string videoDirectory() const { return spiDirectory(videoSpiCore, videoSpiDevice); }

private:
    static std::string spiDirectory(const std::string& core, const std::string& device);
};

/// Where the kernel shows the programmable devices and their cores.
inline constexpr const char* kBusDevices = "/sys/bus/avalon/devices/";

/// The built-in board.
const BoardDescription& orcaBoard();

}  // namespace boardsim
