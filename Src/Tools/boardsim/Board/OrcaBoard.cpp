#include "Tools/boardsim/Board/BuiltInBoards.h"

namespace boardsim {
namespace {

/// The card's serial number, an EAN-13 of the range for use inside a house, made on 2023-11-14 and never
/// serviced; low bytes first.
const EepromRecord kCardSerial{0,
                               {0x37, 0x3C, 0x26, 0x89, 0xD4, 0x01, 0, 0,  //
                                0x00, 0xF1, 0x53, 0x65, 0, 0, 0, 0}};

/// The card's version record behind it: type 0x80, version 0001.02, 2023-11-14, build 7; low bytes first.
const EepromRecord kCardVersion{18, {0x02, 0x01, 0x00, 0x80, 0x07, 0x00, 0x6E, 0x2F, 0, 0, 0, 0}};

/// Low bits are set here and there, as on real boards: whoever forgets to clear them misses the registers.
FpgaPart makeFpga() {
    return {0x10000,
            {
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
            },
            {0x80000305, 0x2F460011, 0}};
}

std::vector<W1BusPart> makeW1Buses() {
    constexpr std::int32_t kWarm = 31 * 16 + 4;
    constexpr std::int32_t kWarmer = 42 * 16 + 8;
    return {
        {{{0x00000A1B2C3D, {kCardSerial, kCardVersion}}}, {{0x0000001A2B3C, 0, kWarm}}},
        {{}, {{0x00000052F00D, 3, kWarmer}}},
    };
}

/// The card ID at 0x40: as in the EEPROM, but the hardware counts months from 0.
CpldPart makeCpld() {
    std::vector<std::uint32_t> words(64);
    constexpr std::size_t kCardId = 0x40 / 4;
    words[kCardId] = 0x80000104;
    words[kCardId + 1] = 0x2F4E0002;
    return {{{"cardid", 0x00010000, {0x00000041}}, {"bus_breakout", 0x00010000, {0x00000080}}}, words};
}

/// The card sets the pace itself, at 25 frames.
SyncPart makeSync() {
    SyncSettings settings;
    settings.id = 0x001A2B3C00042A;
    settings.master = settings.id;
    settings.isMaster = true;
    settings.rate = FrameRate::Fps25;
    settings.networkId = 7;
    settings.timeCode = {10 * 3600, 0, {0x12, 0x34, 0x56, 0x78}};
    return {"subsys_hps_central_sync", settings};
}

/// The same card as in the EEPROM.
RomPart makeRom() {
    RomPart rom;
    rom.start = {0x4F, 0x52, 0x43, 0x41, 0x01};
    rom.macs = {{{0x02, 0x00, 0x5E, 0x10, 0x20, 0x30}, {0x02, 0x00, 0x5E, 0x10, 0x20, 0x31}}};
    rom.version = {0x80000102, 0x2F6E0007, 0};
    rom.serial = {2012345678903, 0x6553F100, 0};
    return rom;
}

}  // namespace

BoardDescription makeOrca() {
    BoardDescription board;
    board.name = "orca";
    board.fpga = makeFpga();
    board.panel = {{}, SpiPlace{"subsys_hps_oled_spi", "1.0"}, "subsys_hps_oled_io_spi"};
    board.mdio = {"ethernet_mdio", {{0, PhyModel::Dp83867}, {1, PhyModel::Phy88e1510}}};
    board.macCore = "subsys_hps_eth_mac";
    board.spiMasterCore = "subsys_hps_ext_spi";
    board.videoChip = {"spi_videosync_out", "2.0"};
    board.rom = makeRom();
    board.hwmon = {{0, 1, 44125}, {0, 2, 47500}, {1, 1, 38062}};
    board.cpld = makeCpld();
    board.w1Buses = makeW1Buses();
    board.gpioChips = {{"reset_pio", 480, 16}, {"oled_pio", 496, 8}, {"misc_pio", 504, 8}};
    board.miiPorts = {{"eth0", {0, PhyModel::Phy88e1510}}, {"eth1", {1, PhyModel::Dp83867}}};
    board.i2c = orcaI2c();
    board.sync = makeSync();
    board.misc = {"misc_pio", 43, 0x00000500};
    board.temperatures = {
        {"subsys_hps_pio_temp_fpga", 61},
        {"subsys_hps_pio_temp_tile0", 57},
        {"subsys_hps_pio_temp_tile1", 58},
    };
    board.inband = {true, "eth0", {120, 35}};
    board.pattern = {true, 8};
    return board;
}

}  // namespace boardsim
