// The newer board's temperatures: registers in the FPGA, and sensors on I2C.
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Board/OrcaInterface.h"
#include "Vl/HAL/Bus/I2CRegisteredDevice.h"
#include "Vl/HAL/Bus/I2CfindBus.h"
#include "Vl/HAL/Chips/Lm75.h"

namespace Valen {
namespace {

constexpr int kAddressWord = 1;
constexpr int kAnyVersion = -1;

struct TemperatureCore {
    const char* core;
    const char* name;
};

constexpr TemperatureCore kTemperatureCores[] = {
    {"subsys_hps_pio_temp_fpga", "pio_temp_fpga"},
    {"subsys_hps_pio_temp_tile0", "pio_temp_tile0"},
    {"subsys_hps_pio_temp_tile1", "pio_temp_tile1"},
};

// In degrees Celsius.
constexpr int kFpgaLimit = 95;
constexpr int kSdiLimit = 80;
constexpr int kFanLimit = 60;
constexpr int kOledLimit = 50;
constexpr int kEthLimit = 75;

int addressOf(const char* sensor) {
    return static_cast<int>(I2CRegisteredDevice::getAddressOf(sensor).address);
}

}  // namespace

void OrcaInterface::findTemperatureRegisters() {
    for (std::size_t which = 0; which < pioTemp_.size(); ++which) {
        const auto& [core, name] = kTemperatureCores[which];
        unsigned int address = 0;
        if (getCoreAddress(core, address, kAddressWord, kAnyVersion) != 1) {
            VL_LOG(Cardcontroller, ERROR, "pio_temp_fpga not found!");  // whichever it is: meant
            continue;
        }
        VL_LOG(Cardcontroller, DEBUG, "Core addr for %s = 0x%08lX", name,
               static_cast<unsigned long>(address));
        pioTemp_[which] = reinterpret_cast<const volatile orca_misc_pio_ctrl*>(registersAt(address));
    }
}

void OrcaInterface::openSdiSensor() {
    const I2CAddress sensor = I2CRegisteredDevice::getAddressOf("sdi_temp");
    sdiTempAddress_ = static_cast<int>(sensor.address);
    sdiTempI2c_.init(static_cast<int>(sensor.bus), false);
}

void OrcaInterface::openSensorBuses() {
    fanI2c_.init(I2CfindBus(FAN_DEVICE_NAME), false);
    synEthI2c_.init(I2CfindBus(SYN_ETH_DEVICE_NAME), false);
}

bool OrcaInterface::getFPGATemperature(int which, int& celsius, int& limit) {
    const auto index = static_cast<std::size_t>(which);
    if (index >= pioTemp_.size()) {
        return false;
    }
    limit = kFpgaLimit;
    return getTemperatureSerial(pioTemp_[index], celsius);
}

bool OrcaInterface::getTemperatureSerial(const volatile orca_misc_pio_ctrl* reg, int& celsius) {
    if (reg == nullptr) {
        return false;
    }
    celsius = orca_misc_pio_ctrl{reg->value}.celsius();
    return true;
}

bool OrcaInterface::getSDITemperature(int& celsius, int& limit) {
    limit = kSdiLimit;
    return get752ATemperature(sdiTempI2c_, sdiTempAddress_, celsius);
}

bool OrcaInterface::getFanTemperature(int& celsius, int& limit) {
    limit = kFanLimit;
    return get752ATemperature(fanI2c_, addressOf("fan_radial_temp"), celsius);
}

bool OrcaInterface::getOledTemperature(int& celsius, int& limit) {
    limit = kOledLimit;
    return get752ATemperature(fanI2c_, addressOf("fan_oled_temp"), celsius);
}

bool OrcaInterface::getETHTemperature(int& celsius, int& limit) {
    limit = kEthLimit;
    return get752ATemperature(synEthI2c_, addressOf("eth_temp"), celsius);
}

bool OrcaInterface::get752ATemperature(I2CSlave& bus, int address, int& celsius) {
    return Lm75::read(bus, address, celsius);
}

}  // namespace Valen
