#include "Tools/boardsim/Board/Json/BoardCheck.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>

#include "Tools/boardsim/Models/MdioMaster.h"
#include "Tools/boardsim/Models/PanelRegisters.h"
#include "Tools/boardsim/Models/SpiMaster.h"
#include "Tools/boardsim/Models/SyncBlock.h"
#include "Tools/boardsim/Models/TemperatureRegister.h"
#include "Tools/boardsim/Models/TripleSpeedMac.h"
#include "Tools/boardsim/Models/W1Eeprom.h"
#include "Tools/boardsim/Models/W1TempSensor.h"

namespace boardsim {
namespace {

/// Gives out the register space.
class Space {
public:
    explicit Space(const BoardDescription& board) : board_(board) {}

    /// A block of the core that `place` names; none when the name is empty.
    void take(const JsonPlace& place, const std::string& core, std::uint32_t bytes) {
        if (core.empty()) {
            return;
        }
        const std::optional<std::uint32_t> address = board_.addressOf(core);
        if (!address) {
            place.refuse("fpga.cores has no '" + core + "' with an address");
        }
        if (*address + std::uint64_t{bytes} > board_.fpga->bytes) {
            place.refuse("the registers of '" + core + "' are beyond the FPGA's");
        }
        for (const auto& [start, end] : taken_) {
            if (*address < end && start < *address + bytes) {
                place.refuse("the registers of '" + core + "' are on top of others");
            }
        }
        taken_.emplace(*address, *address + bytes);
    }

private:
    const BoardDescription& board_;
    std::map<std::uint32_t, std::uint32_t> taken_;
};

void checkRegisters(const JsonPlace& place, const BoardDescription& board) {
    Space space(board);
    if (board.panel) {
        space.take(place.member("panel").member("register_core"), board.panel->registerCore,
                   PanelRegisters::kBlockBytes);
    }
    if (board.mdio) {
        space.take(place.member("mdio").member("core"), board.mdio->core, MdioMaster::kBytes);
    }
    space.take(place.member("mac_core"), board.macCore, TripleSpeedMac::kBytes);
    space.take(place.member("spi_master_core"), board.spiMasterCore, SpiMaster::kBytes);
    if (board.sync) {
        space.take(place.member("sync").member("core"), board.sync->core, SyncBlock::kBytes);
    }
    if (board.misc) {
        space.take(place.member("misc").member("core"), board.misc->core, TemperatureRegister::kBytes);
    }
    for (std::size_t i = 0; i < board.temperatures.size(); ++i) {
        space.take(place.member("temperatures").element(i).member("core"), board.temperatures[i].core,
                   TemperatureRegister::kBytes);
    }
}

void checkSpi(const JsonPlace& place, const BoardDescription& board) {
    if (board.panel && board.panel->screen && board.videoChip &&
        board.panel->screen->directory() == board.videoChip->directory()) {
        place.member("video_chip").refuse("the panel's screen is in its place");
    }
}

/// Refuses the second of equal keys. `keyOf` makes one of an element, `field` is what it is made of.
template <typename Element, typename KeyOf>
void checkUnique(const JsonPlace& list, const std::vector<Element>& elements, const std::string& field,
                 const KeyOf& keyOf) {
    std::set<decltype(keyOf(elements.front()))> known;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!known.insert(keyOf(elements[i])).second) {
            list.element(i).member(field).refuse("another one has it");
        }
    }
}

void checkW1(const JsonPlace& place, const std::vector<W1BusPart>& buses) {
    std::set<std::string> known;
    const auto check = [&](const JsonPlace& slave, const W1Id& id) {
        if (!known.insert(id.name()).second) {
            slave.member("serial").refuse("another one has it");
        }
    };
    for (std::size_t bus = 0; bus < buses.size(); ++bus) {
        const JsonPlace there = place.member("w1_buses").element(bus);
        for (std::size_t i = 0; i < buses[bus].eeproms.size(); ++i) {
            check(there.member("eeproms").element(i), {W1Eeprom::kFamily, buses[bus].eeproms[i].serial});
        }
        for (std::size_t i = 0; i < buses[bus].sensors.size(); ++i) {
            check(there.member("sensors").element(i), {W1TempSensor::kFamily, buses[bus].sensors[i].serial});
        }
    }
}

void checkGpio(const JsonPlace& place, const std::vector<GpioChip>& chips) {
    std::set<unsigned> lines;
    for (std::size_t i = 0; i < chips.size(); ++i) {
        for (unsigned line = chips[i].base; line < chips[i].base + chips[i].count; ++line) {
            if (!lines.insert(line).second) {
                place.member("gpio_chips").element(i).refuse("it has lines of another one");
            }
        }
    }
}

/// The kernel has the first name, and drivers of their own the others.
void checkPorts(const JsonPlace& place, const std::vector<MiiPart>& ports) {
    constexpr std::array<std::string_view, 3> kTaken{"lo", kInbandInterface, kPatternInterface};
    for (std::size_t i = 0; i < ports.size(); ++i) {
        if (std::find(kTaken.begin(), kTaken.end(), ports[i].interface) != kTaken.end()) {
            place.member("mii_ports").element(i).member("interface").refuse("another interface has it");
        }
    }
}

}  // namespace

void checkBoard(const JsonPlace& place, const BoardDescription& board) {
    checkRegisters(place, board);
    checkSpi(place, board);
    checkW1(place, board.w1Buses);
    checkGpio(place, board.gpioChips);
    if (board.mdio) {
        checkUnique(place.member("mdio").member("phys"), board.mdio->phys, "address",
                    [](const MdioPhy& phy) { return phy.address; });
    }
    checkPorts(place, board.miiPorts);
    if (!board.hwmon.empty()) {
        checkUnique(place.member("hwmon"), board.hwmon, "sensor",
                    [](const HwmonSensor& sensor) { return std::pair(sensor.device, sensor.sensor); });
    }
    if (!board.miiPorts.empty()) {
        checkUnique(place.member("mii_ports"), board.miiPorts, "interface",
                    [](const MiiPart& port) { return port.interface; });
    }
}

}  // namespace boardsim
