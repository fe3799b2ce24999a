#include "Tools/boardsim/Board/BoardDescription.h"

#include <algorithm>
#include <array>

#include "Tools/boardsim/Board/BuiltInBoards.h"

namespace boardsim {
namespace {

constexpr std::uint32_t kAddressMask = ~0x3FU;

}  // namespace

std::string SpiPlace::directory() const {
    const std::string bus = device.substr(0, device.find('.'));
    return kBusDevices + core + "/spi_master/spi" + bus + "/spi" + device;
}

std::optional<std::uint32_t> BoardDescription::addressOf(std::string_view core) const {
    if (!fpga || core.empty()) {
        return std::nullopt;
    }
    const auto found = std::find_if(fpga->cores.begin(), fpga->cores.end(),
                                    [&](const Core& each) { return each.name == core; });
    if (found == fpga->cores.end() || found->addresses.empty()) {
        return std::nullopt;
    }
    return found->addresses.front() & kAddressMask;
}

std::span<const BoardDescription> builtInBoards() {
    static const std::array boards{makeOrca(), makeHd24()};
    return boards;
}

const BoardDescription& orcaBoard() {
    return builtInBoards()[0];
}

const BoardDescription& hd24Board() {
    return builtInBoards()[1];
}

const BoardDescription* builtInBoard(std::string_view name) {
    const std::span<const BoardDescription> boards = builtInBoards();
    const auto found = std::find_if(boards.begin(), boards.end(),
                                    [&](const BoardDescription& board) { return board.name == name; });
    return found == boards.end() ? nullptr : &*found;
}

}  // namespace boardsim
