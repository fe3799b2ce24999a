// A program for the virtual board that uses the library's I2C drivers as its words say, one after the other,
// and prints what they answer.
#include <array>
#include <cstdio>
#include <cstring>
#include <string>

#include "Vl/HAL/Bus/I2CRegisteredDevice.h"
#include "Vl/HAL/Bus/I2CSlave.h"
#include "Vl/HAL/Bus/I2CfindBus.h"
#include "Vl/HAL/Chips/ADV9371.h"
#include "Vl/HAL/Chips/ADVI2C.h"
#include "Vl/HAL/Chips/OrcaResetIOs.h"
#include "Vl/HAL/Chips/Sx1509b.h"

namespace {

using namespace Valen;

Sx1509b expanderNamed(const char* name) {
    const I2CAddress place = I2CRegisteredDevice::getAddressOf(name);
    return {static_cast<int>(place.bus), static_cast<int>(place.address), false};
}

/// Where the chips are, as the registry says.
void places() {
    const I2CAddress sensor = I2CRegisteredDevice::getAddressOf("fan_oled_temp");
    std::printf("%d %s %x %d\n", I2CfindBus("fan"), sensor.name, sensor.address, I2CfindBus("nobody"));
}

/// A temperature in twelve bits.
void temperature() {
    const I2CAddress place = I2CRegisteredDevice::getAddressOf("fan_oled_temp");
    I2CSlave bus;
    std::uint16_t word = 0;
    const bool isRead = bus.init(I2CfindBus("fan"), false) &&
                        bus.selectSlave(static_cast<int>(place.address)) && bus.write(1, 0x60) &&
                        bus.read16(0, word);
    std::printf("%s 0x%04x\n", isRead ? "read" : "failed", word);
}

/// Several registers in one transfer.
void many() {
    const I2CAddress place = I2CRegisteredDevice::getAddressOf("video_enc");
    I2CSlave bus;
    bus.init(static_cast<int>(place.bus), false);
    bus.selectSlave(static_cast<int>(place.address));
    const std::array<std::uint8_t, 4> written{0x20, 1, 2, 3};
    std::array<std::uint8_t, 3> bytes{};
    const bool isWritten = bus.writeMulti(written.data(), written.size());
    const bool isRead = bus.readMultiAt(0x20, bytes.data(), bytes.size());
    std::printf("%d %d %d %d %d\n", isWritten, isRead, bytes[0], bytes[1], bytes[2]);
}

void video() {
    ADVI2C chip;
    const bool isOpen = chip.init("video_enc");
    const int written = chip.setReg(0x42, 0x99);
    std::printf("%d %d 0x%02x\n", isOpen, written, static_cast<unsigned>(chip.getReg(0x42)));
}

void videoSync() {
    ADV9371 chip("/sys/bus/avalon/devices/spi_videosync_out/spi_master/spi2/spi2.0/adv_regs");
    const int written = chip.setReg(0xFE, 0x81);
    std::printf("%d 0x%02x 0x%02x\n", written, static_cast<unsigned>(chip.getReg(0xFE)),
                static_cast<unsigned>(chip.getReg(0x00)));
}

/// LEDs of an expander: outputs, one pin, a deferred change of both ports.
void leds() {
    Sx1509b chip = expanderNamed("led_sync");
    const bool isSet =
        chip.setAOutputs(0x07, 0x00) && chip.setBOutputs(0x01, 0x00) && chip.setValueA(1, 1, false);
    std::printf("%s %d 0x%02x 0x%02x", chip.dbg_print().c_str(), isSet,
                static_cast<unsigned>(chip.getInputA()), static_cast<unsigned>(chip.getInputB()));
    chip.setValueA(0, 1, true);
    chip.setValueB(0, 1, true);
    const bool isSent = chip.writeDataRegisters();
    std::printf(" %d 0x%02x 0x%02x\n", isSent, static_cast<unsigned>(chip.getInputA()),
                static_cast<unsigned>(chip.getInputB()));
}

/// Looks again and again whether an expander was reset, and restores it.
void restore() {
    Sx1509b chip = expanderNamed("eth_led");
    chip.setAOutputs(0x30, 0x00);
    for (int i = 0; i < 3; ++i) {
        const int wasReset = chip.detectReset();
        std::printf("%d", wasReset);
        if (wasReset == 1) {
            const bool isRestored = chip.reinitRegisters();
            std::printf(" restored %d 0x%02x", isRestored, static_cast<unsigned>(chip.getInputA()));
        }
        std::printf("%s", i < 2 ? ", " : "\n");
    }
}

void open() {
    Sx1509b chip;
    const I2CAddress place = I2CRegisteredDevice::getAddressOf("led_sync");
    std::printf("%d\n", chip.init(static_cast<int>(place.bus), static_cast<int>(place.address), false));
}

void resetMode() {
    Sx1509b chip = expanderNamed("eth_led");
    OrcaResetIOs resets(&chip);
    std::printf("%d %d\n", static_cast<int>(resets.queryResetMode()), resets.querySwReset());
}

void flipFlops() {
    Sx1509b chip = expanderNamed("eth_led");
    OrcaResetIOs resets(&chip);
    const bool isDone = resets.resetFlipFlops();
    std::printf("%d 0x%02x\n", isDone, static_cast<unsigned>(chip.getInputA()));
}

struct Word {
    const char* name;
    void (*act)();
};

constexpr Word kWords[] = {
    {"places", places},
    {"temperature", temperature},
    {"many", many},
    {"video", video},
    {"video-sync", videoSync},
    {"leds", leds},
    {"restore", restore},
    {"open", open},
    {"reset-mode", resetMode},
    {"flip-flops", flipFlops},
};

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        for (const Word& word : kWords) {
            if (std::strcmp(word.name, argv[i]) == 0) {
                word.act();
            }
        }
    }
}
