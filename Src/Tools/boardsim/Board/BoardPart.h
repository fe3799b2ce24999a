#pragma once

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace boardsim {

/// Parts that a board may lack, to see what a program makes of it.
enum class BoardPart : std::uint8_t {
    Screen,          ///< the panel's "screen" file; its SPI device is there
    Spi,             ///< the panel's SPI master with everything below it
    PanelRegisters,  ///< the panel's core in the layout file
    Layout,          ///< the layout file
    Fpga,            ///< the device node of the register space
    Gpio,            ///< the device node of the GPIO block
    Log,             ///< the system log's socket
    Font,            ///< the font; its directory is there
    FontDirectory,   ///< the font's directory
    W1,              ///< the 1-Wire buses
    Cpld,            ///< the second programmable device: node and layout
    Mii,             ///< the answers of network interfaces to MII requests
    I2c,             ///< the I2C buses and the registry of their devices
    Rom,             ///< the device node of the identity ROM
    Hwmon,           ///< the kernel's hardware monitoring
    Eeprom,          ///< the EEPROMs on I2C
    Sync,            ///< the sync block's core in the layout file
    Network,         ///< the Ethernet ports, "eth0" and "eth1", and what answers there to MII requests
    Inband,          ///< the in-band management link, "inbd"
    Pattern,         ///< the test-pattern interface, "pattern"
};
inline constexpr std::size_t kBoardParts = 20;

/// The word for a part on the command line: "panel-registers".
std::string_view partName(BoardPart part);
std::optional<BoardPart> partNamed(std::string_view name);

/// All words, separated by commas and blanks.
std::string allPartNames();

class BoardParts {
public:
    void add(BoardPart part) { bits_.set(static_cast<std::size_t>(part)); }
    bool has(BoardPart part) const { return bits_.test(static_cast<std::size_t>(part)); }

private:
    std::bitset<kBoardParts> bits_;
};

}  // namespace boardsim
