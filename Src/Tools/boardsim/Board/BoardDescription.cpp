#include "Tools/boardsim/Board/BoardDescription.h"

#include <algorithm>

namespace boardsim {
namespace {

constexpr std::uint32_t kAddressMask = ~0x3FU;

BoardDescription makeOrca() {
    BoardDescription board;
    board.name = "orca";
    board.fpgaBytes = 0x10000;
    // Low bits are set here and there, as on real boards: whoever forgets to clear them misses the registers.
    board.cores = {
        {"cardid", 0x00010000, {0x00000001}},
        {"subsys_hps_central_sync", 0x00030002, {0x00000401}},
        {"misc_pio", 0x00010000, {0x00000440}},
        {"ethernet_mdio", 0x00010001, {0x00000800, 0x00000841}},
        {"subsys_hps_pio_temp_fpga", 0x00010000, {0x00000C02}},
        {"subsys_hps_pio_temp_tile0", 0x00010000, {0x00000C42}},
        {"subsys_hps_pio_temp_tile1", 0x00010000, {0x00000C82}},
        {"subsys_hps_oled_spi", 0x00020000, {0x00000FC0}},
        {"subsys_hps_oled_io_spi", 0x00010003, {0x00001005}},
        {"version_only", 0x00010000, {}},
        {"subsys_hps_eth_mac", 0x00010000, {0x00002003}},
        {"subsys_hps_ext_spi", 0x00010000, {0x00002401}},
        {"spi_videosync_out", 0x00010000, {0x00002441}},
    };
    board.panelSpiCore = "subsys_hps_oled_spi";
    board.panelRegisterCore = "subsys_hps_oled_io_spi";
    board.panelSpiDevice = "1.0";
    board.mdioCore = "ethernet_mdio";
    board.phys = {{0, PhyModel::Dp83867}, {1, PhyModel::Phy88e1510}};
    board.macCore = "subsys_hps_eth_mac";
    board.spiMasterCore = "subsys_hps_ext_spi";
    board.videoSpiCore = "spi_videosync_out";
    board.videoSpiDevice = "2.0";
    board.i2c = orcaI2c();
    return board;
}

}  // namespace

std::uint32_t BoardDescription::addressOf(std::string_view core) const {
    const auto found =
        std::find_if(cores.begin(), cores.end(), [&](const Core& c) { return c.name == core; });
    return found->addresses.front() & kAddressMask;
}

std::string BoardDescription::spiDirectory(const std::string& core, const std::string& device) {
    const std::string bus = device.substr(0, device.find('.'));
    return kBusDevices + core + "/spi_master/spi" + bus + "/spi" + device;
}

const BoardDescription& orcaBoard() {
    static const BoardDescription board = makeOrca();
    return board;
}

}  // namespace boardsim
