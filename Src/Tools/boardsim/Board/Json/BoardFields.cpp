#include "Tools/boardsim/Board/Json/PartFields.h"

namespace boardsim {
namespace {

constexpr std::size_t kLongestName = 64;
constexpr std::size_t kMostSensors = 256;
constexpr std::size_t kMostBuses = 16;
constexpr std::size_t kMostChips = 32;
constexpr std::size_t kMostPorts = 16;
constexpr std::size_t kMostRegisters = 16;

}  // namespace

template <>
const std::vector<Field<BoardDescription>>& fieldsOf() {
    using Board = BoardDescription;
    static const std::vector<Field<Board>> fields{
        required("name", &Board::name, fileName(kLongestName)),
        optional("fpga", &Board::fpga, record<FpgaPart>()),
        optional("panel", &Board::panel, record<PanelPart>()),
        optional("mdio", &Board::mdio, record<MdioPart>()),
        omittable("mac_core", &Board::macCore, coreName()),
        omittable("spi_master_core", &Board::spiMasterCore, coreName()),
        optional("sync", &Board::sync, syncBlock()),
        optional("misc", &Board::misc, record<MiscPart>()),
        omittable("temperatures", &Board::temperatures, listOf(record<TemperaturePart>(), kMostRegisters)),
        optional("video_chip", &Board::videoChip, record<SpiPlace>()),
        optional("rom", &Board::rom, record<RomPart>()),
        omittable("hwmon", &Board::hwmon, listOf(record<HwmonSensor>(), kMostSensors)),
        optional("cpld", &Board::cpld, record<CpldPart>()),
        omittable("w1_buses", &Board::w1Buses, listOf(record<W1BusPart>(), kMostBuses)),
        omittable("gpio_chips", &Board::gpioChips, listOf(record<GpioChip>(), kMostChips)),
        omittable("mii_ports", &Board::miiPorts, listOf(record<MiiPart>(), kMostPorts)),
        optional("inband", &Board::inband, record<InbandPart>()),
        optional("pattern", &Board::pattern, record<PatternPart>()),
        omittable("i2c", &Board::i2c, i2cBuses()),
    };
    return fields;
}

}  // namespace boardsim
