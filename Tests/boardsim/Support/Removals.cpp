#include <functional>

#include "Tests/boardsim/Support/RandomBoard.h"

namespace boards {
namespace {

using namespace boardsim;

void forgetCore(BoardDescription& board, const std::string& name) {
    if (board.panel && board.panel->registerCore == name) {
        board.panel->registerCore.clear();
    }
    if (board.panel && board.panel->screen && board.panel->screen->core == name) {
        board.panel->screen.reset();
    }
    if (board.mdio && board.mdio->core == name) {
        board.mdio.reset();
    }
    if (board.videoChip && board.videoChip->core == name) {
        board.videoChip.reset();
    }
    if (board.sync && board.sync->core == name) {
        board.sync.reset();
    }
    if (board.misc && board.misc->core == name) {
        board.misc.reset();
    }
    std::erase_if(board.temperatures, [&](const TemperaturePart& part) { return part.core == name; });
    for (std::string* core : {&board.macCore, &board.spiMasterCore}) {
        if (*core == name) {
            core->clear();
        }
    }
}

/// Collects boards, each a copy with one change.
class Collection {
public:
    explicit Collection(const BoardDescription& whole) : whole_(whole) {}

    void add(const std::string& device, const std::function<void(BoardDescription&)>& take) {
        removals_.push_back({device, whole_});
        take(removals_.back().board);
    }
    template <typename List>
    void addEach(const List& list, const std::function<std::string(std::size_t)>& nameOf,
                 const std::function<void(BoardDescription&, std::size_t)>& take) {
        for (std::size_t i = 0; i < list.size(); ++i) {
            add(nameOf(i), [&](BoardDescription& board) { take(board, i); });
        }
    }
    std::vector<Removal> take() { return std::move(removals_); }

private:
    const BoardDescription& whole_;
    std::vector<Removal> removals_;
};

template <typename List>
void takeOut(List& list, std::size_t number) {
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(number));
}

void takeFromFpga(Collection& all, const BoardDescription& whole) {
    if (!whole.fpga) {
        return;
    }
    all.add("fpga", [](BoardDescription& board) {
        for (const Core& core : board.fpga->cores) {
            forgetCore(board, core.name);
        }
        board.fpga.reset();
    });
    const std::vector<Core>& cores = whole.fpga->cores;
    all.addEach(
        cores, [&](std::size_t i) { return "core " + cores[i].name; },
        [&](BoardDescription& board, std::size_t i) {
            forgetCore(board, cores[i].name);
            takeOut(board.fpga->cores, i);
        });
}

void takePanelAndVideo(Collection& all, const BoardDescription& whole) {
    if (whole.panel) {
        all.add("panel", [](BoardDescription& board) { board.panel.reset(); });
    }
    if (whole.panel && whole.panel->screen) {
        all.add("screen", [](BoardDescription& board) { board.panel->screen.reset(); });
    }
    if (whole.videoChip) {
        all.add("video chip", [](BoardDescription& board) { board.videoChip.reset(); });
    }
    if (whole.rom) {
        all.add("rom", [](BoardDescription& board) { board.rom.reset(); });
    }
    if (whole.cpld) {
        all.add("cpld", [](BoardDescription& board) { board.cpld.reset(); });
    }
}

void takeWires(Collection& all, const BoardDescription& whole) {
    if (whole.mdio) {
        const std::vector<MdioPhy>& phys = whole.mdio->phys;
        all.addEach(
            phys, [&](std::size_t i) { return "phy " + std::to_string(phys[i].address); },
            [](BoardDescription& board, std::size_t i) { takeOut(board.mdio->phys, i); });
    }
    all.addEach(
        whole.miiPorts, [&](std::size_t i) { return "mii " + whole.miiPorts[i].interface; },
        [](BoardDescription& board, std::size_t i) { takeOut(board.miiPorts, i); });
    if (whole.inband) {
        all.add("inband", [](BoardDescription& board) { board.inband.reset(); });
    }
    if (whole.pattern) {
        all.add("pattern", [](BoardDescription& board) { board.pattern.reset(); });
    }
    all.addEach(
        whole.gpioChips, [&](std::size_t i) { return "gpio " + whole.gpioChips[i].label; },
        [](BoardDescription& board, std::size_t i) { takeOut(board.gpioChips, i); });
    all.addEach(
        whole.hwmon,
        [&](std::size_t i) {
            return "hwmon" + std::to_string(whole.hwmon[i].device) + "/temp" +
                   std::to_string(whole.hwmon[i].sensor);
        },
        [](BoardDescription& board, std::size_t i) { takeOut(board.hwmon, i); });
    for (std::size_t bus = 0; bus < whole.w1Buses.size(); ++bus) {
        const std::string name = " on w1 bus " + std::to_string(bus + 1);
        all.addEach(
            whole.w1Buses[bus].eeproms, [&](std::size_t) { return "eeprom" + name; },
            [&](BoardDescription& board, std::size_t i) { takeOut(board.w1Buses[bus].eeproms, i); });
        all.addEach(
            whole.w1Buses[bus].sensors, [&](std::size_t) { return "sensor" + name; },
            [&](BoardDescription& board, std::size_t i) { takeOut(board.w1Buses[bus].sensors, i); });
    }
}

void takeFromI2c(Collection& all, const I2cDescription& i2c) {
    const auto nameOf = [](const std::string& name, const std::string& kernelName) {
        return name.empty() ? kernelName : name;
    };
    all.addEach(
        i2c.buses,
        [&](std::size_t i) { return "bus " + nameOf(i2c.buses[i].name, i2c.buses[i].kernelName()); },
        [&](BoardDescription& board, std::size_t i) {
            std::erase_if(board.i2c.devices,
                          [&](const I2cDevice& device) { return device.bus == i2c.buses[i].number; });
            takeOut(board.i2c.buses, i);
        });
    all.addEach(
        i2c.devices,
        [&](std::size_t i) { return "chip " + nameOf(i2c.devices[i].name, i2c.devices[i].kernelName()); },
        [](BoardDescription& board, std::size_t i) { takeOut(board.i2c.devices, i); });
}

}  // namespace

std::vector<Removal> removals(const BoardDescription& board) {
    Collection all(board);
    takeFromFpga(all, board);
    takePanelAndVideo(all, board);
    takeWires(all, board);
    takeFromI2c(all, board.i2c);
    return all.take();
}

}  // namespace boards
