#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Tools/boardsim/Board/HwmonDescription.h"
#include "Tools/boardsim/Board/I2cDescription.h"
#include "Tools/boardsim/Board/Layout.h"
#include "Tools/boardsim/Board/NetworkDescription.h"
#include "Tools/boardsim/Board/PhyParts.h"
#include "Tools/boardsim/Board/RomDescription.h"
#include "Tools/boardsim/Board/StatusDescription.h"
#include "Tools/boardsim/Board/W1Description.h"
#include "Tools/boardsim/Models/GpioBlock.h"
#include "Tools/boardsim/Models/PanelScreen.h"

namespace boardsim {

/// The main programmable device: the size of its register space and what is in it.
struct FpgaPart {
    std::size_t bytes = 0;
    std::vector<Core> cores{};  ///< in the order of the layout file
    /// The words of its "cardid" core: a version, whose months count from 0.
    std::array<std::uint32_t, 3> cardId{};

    bool operator==(const FpgaPart&) const = default;
};

/// A device on an SPI master that is a core of the FPGA and has a kernel driver.
struct SpiPlace {
    std::string core{};    ///< the master
    std::string device{};  ///< bus and chip select, "1.0"

    /// The kernel's directory of it.
    std::string directory() const;

    bool operator==(const SpiPlace&) const = default;
};

/// The front panel. A panel may lack its screen, or its controls.
struct PanelPart {
    PanelGeometry geometry{};
    std::optional<SpiPlace> screen{};
    std::string registerCore{};  ///< the block of buttons, encoder and LED; none when empty

    bool operator==(const PanelPart&) const = default;
};

/// The FPGA's MDIO bus.
struct MdioPart {
    std::string core{};  ///< its master
    std::vector<MdioPhy> phys{};

    bool operator==(const MdioPart&) const = default;
};

/// The second programmable device, whose registers only tell what it is.
struct CpldPart {
    std::vector<Core> cores{};           ///< in the order of its layout file
    std::vector<std::uint32_t> words{};  ///< its registers from address 0

    bool operator==(const CpldPart&) const = default;
};

/// What a board consists of, without saying how a program reaches it. Every part may be absent: an optional
/// without a value, an empty list, an empty name of a core.
struct BoardDescription {
    std::string name;
    std::optional<FpgaPart> fpga{};
    std::optional<PanelPart> panel{};

    // Cores of the FPGA whose registers act.
    std::optional<MdioPart> mdio{};
    std::string macCore{};        ///< a triple-speed MAC
    std::string spiMasterCore{};  ///< an SPI master without a kernel driver; a word comes back with the next

    std::optional<SpiPlace> videoChip{};  ///< the video synchronisation chip, whose registers are a file

    // Beside the FPGA.
    std::optional<RomPart> rom{};
    std::vector<HwmonSensor> hwmon{};
    std::optional<CpldPart> cpld{};
    std::vector<W1BusPart> w1Buses{};  ///< the first is number 1
    std::vector<GpioChip> gpioChips{};
    std::vector<MiiPart> miiPorts{};
    I2cDescription i2c{};

    // Cores of the FPGA that tell something by themselves.
    std::optional<SyncPart> sync{};
    std::optional<MiscPart> misc{};
    std::vector<TemperaturePart> temperatures{};

    // Network interfaces that are no ordinary ports.
    std::optional<InbandPart> inband{};
    std::optional<PatternPart> pattern{};

    /// Byte offset of a core of the FPGA in its register space; nothing when there is no such core, or it
    /// has no registers.
    std::optional<std::uint32_t> addressOf(std::string_view core) const;

    /// Where the panel's registers are.
    std::optional<std::uint32_t> panelRegisters() const {
        return panel ? addressOf(panel->registerCore) : std::nullopt;
    }

    bool operator==(const BoardDescription&) const = default;
};

/// Where the kernel shows the programmable devices and their cores.
inline constexpr const char* kBusDevices = "/sys/bus/avalon/devices/";

/// The built-in boards: "orca", the default, and "hd24".
const BoardDescription& orcaBoard();
const BoardDescription& hd24Board();
std::span<const BoardDescription> builtInBoards();

/// @return null when there is no built-in board of this name.
const BoardDescription* builtInBoard(std::string_view name);

}  // namespace boardsim
