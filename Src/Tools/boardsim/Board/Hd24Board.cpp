#include "Tools/boardsim/Board/BuiltInBoards.h"

namespace boardsim {
namespace {

FpgaPart makeFpga() {
    return {0x8000,
            {
                {"cardid", 0x00010000, {0x00000001}},
                {"central_sync", 0x00020001, {0x00000403}},
                {"misc_pio", 0x00010000, {0x00000444}},
                {"ethernet_mdio", 0x00010000, {0x00000800}},
                {"oled_spi", 0x00010000, {0x00000840}},
                {"oled_io_spi", 0x00010001, {0x00000881}},
                {"eth_mac", 0x00010000, {0x00001002}},
                {"spi_videosync_out", 0x00010000, {0x00001441}},
            },
            {0x80000411, 0x228E0009, 0}};
}

/// The card's serial number, an EAN-13 of the range for use inside a house, made on 2017-03-21 and serviced
/// on 2020-06-02; low bytes first. Behind it its version: type 0x80, 0002.01, 2017-03-21, build 42.
std::vector<W1BusPart> makeW1Buses() {
    const EepromRecord serial{0,
                              {0x8F, 0xDA, 0xD9, 0x82, 0xD4, 0x01, 0x00, 0x00,  //
                               0x00, 0x6D, 0xD0, 0x58, 0x80, 0x96, 0xD5, 0x5E}};
    const EepromRecord version{18, {0x01, 0x02, 0x00, 0x80, 0x2A, 0x00, 0x75, 0x22, 0, 0, 0, 0}};
    constexpr std::int32_t kWarm = 28 * 16 + 10;
    return {{{{0x00000B2C3D4E, {serial, version}}}, {{0x0000004D5E6F, 0, kWarm}}}};
}

/// The card ID at 0: as in the EEPROM, but the hardware counts months from 0.
CpldPart makeCpld() {
    std::vector<std::uint32_t> words(16);
    words[0] = 0x80000201;
    words[1] = 0x22550011;
    return {{{"cardid", 0x00010000, {0x00000000}}}, words};
}

/// The card follows another one, at 30 frames.
SyncPart makeSync() {
    SyncSettings settings;
    settings.id = 0x004D5E6F000017;
    settings.master = 0x001A2B3C00042A;
    settings.isMaster = false;
    settings.rate = FrameRate::Fps30;
    settings.networkId = 7;
    settings.timeCode = {20 * 3600 + 15 * 60, 12, {}};
    return {"central_sync", settings};
}

/// The same card as in the EEPROM.
RomPart makeRom() {
    RomPart rom;
    rom.macs = {{{0x02, 0x00, 0x5E, 0x0A, 0x0B, 0x0C}, {0x02, 0x00, 0x5E, 0x0A, 0x0B, 0x0D}}};
    rom.version = {0x80000201, 0x2275002A, 0};
    rom.serial = {2012240009871, 0x58D06D00, 0x5ED59680};
    return rom;
}

}  // namespace

BoardDescription makeHd24() {
    BoardDescription board;
    board.name = "hd24";
    board.fpga = makeFpga();
    board.panel = {{}, SpiPlace{"oled_spi", "0.0"}, "oled_io_spi"};
    board.mdio = {"ethernet_mdio", {{0, PhyModel::Phy88e1510}, {1, PhyModel::Phy88e1510}}};
    board.macCore = "eth_mac";
    board.videoChip = {"spi_videosync_out", "1.0"};
    board.rom = makeRom();
    board.hwmon = {{0, 1, 51500}};
    board.cpld = makeCpld();
    board.w1Buses = makeW1Buses();
    board.gpioChips = {{"reset_pio", 448, 32}, {"oled_pio", 480, 8}};
    board.miiPorts = {{"eth0", {0, PhyModel::Phy88e1510}}, {"eth1", {1, PhyModel::Phy88e1510}}};
    board.sync = makeSync();
    board.misc = {"misc_pio", 38, 0x00000300};
    board.inband = {true, "eth1", {250, 80}};
    board.pattern = {true, 4};
    return board;
}

}  // namespace boardsim
