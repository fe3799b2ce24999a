#include "Tools/boardsim/Board/I2cDescription.h"

#include <array>
#include <cstdio>

namespace boardsim {
namespace {

constexpr int degrees(double celsius) {
    return static_cast<int>(celsius * 16);
}

/// Printed circuit board 1.2 revision 01a.
IdentityMemory identity() {
    return {DeviceField{2100000012345, 0xA17C3, {500, 42}},
            PcbField{2, 1, "01a"},
            {{0x02, 0x00, 0x5E, 0x10, 0x20, 0x30}, {0x02, 0x00, 0x5E, 0x10, 0x20, 0x31}},
            "sandwich 3"};
}

}  // namespace

std::string I2cDevice::kernelName() const {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "%u-%04x", bus, address);
    return text.data();
}

std::string I2cDevice::directory() const {
    return "/sys/bus/i2c/devices/" + kernelName();
}

I2cDescription without(const BoardParts& missing, const I2cDescription& i2c) {
    I2cDescription left = missing.has(BoardPart::I2c) ? I2cDescription{} : i2c;
    if (missing.has(BoardPart::Eeprom)) {
        std::erase_if(left.devices, [](const I2cDevice& device) { return device.chip == I2cChip::Eeprom; });
    }
    return left;
}

I2cDescription orcaI2c() {
    using enum I2cChip;
    I2cDescription i2c;
    i2c.buses = {{0, ""},        {1, "fan"},     {2, "syn_eth"}, {3, "qsfp0_0"},
                 {4, "qsfp0_1"}, {5, "qsfp1_0"}, {6, "qsfp1_1"}};
    i2c.devices = {
        {0, 0x2A, VideoEncoder, "video_enc", 0, ""},
        {0, 0x48, TemperatureSensor, "sdi_temp", degrees(41.5), ""},
        {0, 0x50, Eeprom, "eeprom", 0, "", identity()},
        {0, 0x5B, PowerSupply, "psu", 0, ""},
        {1, 0x48, TemperatureSensor, "fan_radial_temp", degrees(29.25), ""},
        {1, 0x49, TemperatureSensor, "fan_oled_temp", degrees(33.0625), ""},
        {2, 0x3E, Expander, "eth_led", 0, ""},
        {2, 0x3F, Expander, "led_sync", 0, ""},
        {2, 0x4A, TemperatureSensor, "eth_temp", degrees(46.75), ""},
        {3, 0x3E, Expander, "", 0, ""},
        {4, 0x3E, Expander, "", 0, ""},
        {5, 0x3E, Expander, "", 0, ""},
        {6, 0x3E, Expander, "", 0, ""},
    };
    return i2c;
}

}  // namespace boardsim
