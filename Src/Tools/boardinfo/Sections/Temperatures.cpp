#include <cstdint>

#include "Tools/boardinfo/Board.h"
#include "Tools/boardinfo/Sections/Presence.h"
#include "Tools/boardinfo/Sections/Sections.h"
#include "Vl/HAL/Board/OrcaInterface.h"

namespace boardinfo::sections {
namespace {

using Valen::OrcaInterface;

constexpr const char* kDegrees = "°C";

/// A register of the FPGA's.
struct FpgaSensor {
    const char* name;
    int which;
    const char* core;
};

constexpr FpgaSensor kFpgaSensors[] = {
    {"FPGA", 0, "subsys_hps_pio_temp_fpga"},
    {"tile 0", 1, "subsys_hps_pio_temp_tile0"},
    {"tile 1", 2, "subsys_hps_pio_temp_tile1"},
};

/// A sensor on an I2C bus.
struct I2cSensor {
    const char* name;
    bool (OrcaInterface::*read)(int& celsius, int& limit);
    const char* device;
};

constexpr I2cSensor kI2cSensors[] = {
    {"SDI", &OrcaInterface::getSDITemperature, "sdi_temp"},
    {"fan", &OrcaInterface::getFanTemperature, "fan_radial_temp"},
    {"OLED", &OrcaInterface::getOledTemperature, "fan_oled_temp"},
    {"Ethernet", &OrcaInterface::getETHTemperature, "eth_temp"},
};

Row limited(const char* name, int celsius, int limit) {
    return answered(name, std::int64_t{celsius}, kDegrees).with("limit", std::int64_t{limit}, kDegrees);
}

Row read(Board& board, const FpgaSensor& sensor) {
    int celsius = 0;
    int limit = 0;
    if (board.orca()->getFPGATemperature(sensor.which, celsius, limit)) {
        return limited(sensor.name, celsius, limit);
    }
    return {sensor.name, silence(coreState(board, sensor.core) != State::NotPresent)};
}

Row read(Board& board, const I2cSensor& sensor) {
    int celsius = 0;
    int limit = 0;
    if ((board.orca()->*sensor.read)(celsius, limit)) {
        return limited(sensor.name, celsius, limit);
    }
    return {sensor.name, silence(isRegistered(sensor.device))};
}

/// The older board knows the FPGA's temperature only, and no limit.
Row readOlder(Board& board) {
    int celsius = 0;
    if (board.common().getFPGATemperature(celsius)) {
        return answered("FPGA", std::int64_t{celsius}, kDegrees);
    }
    return {"FPGA", silence(coreState(board, "misc_pio") != State::NotPresent)};
}

}  // namespace

Section temperatures(Board& board) {
    Section section{"temperatures"};
    if (board.orca() == nullptr) {
        section.rows = {readOlder(board)};
        for (const char* name : {"tile 0", "tile 1", "SDI", "fan", "OLED", "Ethernet"}) {
            section.rows.push_back(notPresent(name));
        }
        return section;
    }
    for (const FpgaSensor& sensor : kFpgaSensors) {
        section.rows.push_back(read(board, sensor));
    }
    for (const I2cSensor& sensor : kI2cSensors) {
        section.rows.push_back(read(board, sensor));
    }
    return section;
}

}  // namespace boardinfo::sections
