// The newer board's I/O expanders: how they are opened and set up.
#include <span>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Board/OrcaInterface.h"
#include "Vl/HAL/Bus/I2CRegisteredDevice.h"
#include "Vl/HAL/Bus/I2CfindBus.h"

namespace Valen {
namespace {

struct Setting {
    bool (Sx1509b::*set)(std::uint8_t value);
    std::uint8_t value;
};

constexpr const char* kQsfpBuses[] = {"qsfp0_0", "qsfp0_1", "qsfp1_0", "qsfp1_1"};
constexpr int kQsfpAddress = 0x3E;

constexpr std::uint8_t kInternalClock = 0x40;  // of setClock: 2 MHz
constexpr std::uint8_t kLedClock = 0x40;       // of setMisc: undivided

/// A4 to A7 and B drive the cage's LEDs; A0 to A3 are signals of the modules.
constexpr Setting kQsfpSettings[] = {
    {&Sx1509b::setLedAEnable, 0xF0},       //
    {&Sx1509b::setLedBEnable, 0xFF},       //
    {&Sx1509b::setAOpenDrain, 0xF0},       // LEDs are sunk
    {&Sx1509b::setBOpenDrain, 0xFF},       //
    {&Sx1509b::setInADisable, 0xF0},       // and not read
    {&Sx1509b::setInBDisable, 0xFF},       //
    {&Sx1509b::setClock, kInternalClock},  //
    {&Sx1509b::setMisc, kLedClock},        //
};
constexpr std::uint8_t kQsfpDirections = 0xFE;  // A0 drives
constexpr std::uint8_t kQsfpLevels = 0x00;

/// Where the chip of the sync LEDs is on boards of either kind.
constexpr int kSyncAddress = 0x3F;
constexpr int kOtherSyncAddress = 0x71;
constexpr int kNoAnswer = 2;  // of Sx1509b::init

constexpr std::uint8_t kSyncOutputs = 0x07;
/// B0 to B2 and B4 to B6 drive LEDs.
constexpr Setting kSyncSettings[] = {
    {&Sx1509b::setSenseHighB, 0x80},       // B7: rising edges
    {&Sx1509b::setLedBEnable, 0x77},       //
    {&Sx1509b::setClock, kInternalClock},  //
    {&Sx1509b::setMisc, kLedClock},        //
    {&Sx1509b::setInBDisable, 0x77},       //
    {&Sx1509b::setBOpenDrain, 0x77},       //
};

constexpr int kPsuLedPins[] = {5, 4};  // of port A of the Ethernet-LED expander
constexpr std::uint8_t kPsuLeds = 1 << 5 | 1 << 4;

/// Makes all settings, also after one that failed. @return whether all succeeded.
bool apply(Sx1509b& chip, std::span<const Setting> settings) {
    bool succeeded = true;
    for (const auto& [set, value] : settings) {
        succeeded &= (chip.*set)(value);
    }
    return succeeded;
}

I2CAddress findDevice(const char* name) {
    const I2CAddress place = I2CRegisteredDevice::getAddressOf(name);
    if (place.name[0] == '\0') {
        VL_LOG(Core, ERROR, "Unable to find i2c device: %s", name);
    }
    return place;
}

void logFailure(const char* name) {
    VL_LOG(Core, ERROR, "Failed to initialize %s ", name);
}

}  // namespace

void OrcaInterface::openQsfpExpanders() {
    for (std::size_t index = 0; index < qsfpIo_.size(); ++index) {
        qsfpIo_[index].init(I2CfindBus(kQsfpBuses[index]), kQsfpAddress, false);
    }
}

void OrcaInterface::setUpQsfpExpanders() {
    bool succeeded = true;
    for (Sx1509b& chip : qsfpIo_) {
        succeeded &= apply(chip, kQsfpSettings);
        chip.setADirection(kQsfpDirections, kQsfpLevels);  // does not count: meant
    }
    if (!succeeded) {
        VL_LOG(Core, ERROR, "Failed to initialize QSFP GPIO");
    }
}

void OrcaInterface::openSyncExpander() {
    const I2CAddress place = findDevice(LED_SYNC_DEVICE_NAME);
    const int bus = static_cast<int>(place.bus);
    const int address = static_cast<int>(place.address);
    if (syncIo_.init(bus, address, false) != kNoAnswer || address != kSyncAddress) {
        return;  // any other failure shows when the chip is set up
    }
    VL_LOG(Core, NOTICE, "Failed to initialize %s with default i2c slave:%d trying slave: %d",
           LED_SYNC_DEVICE_NAME, kSyncAddress, kOtherSyncAddress);
    if (syncIo_.init(bus, kOtherSyncAddress, false) != 0) {
        logFailure(LED_SYNC_DEVICE_NAME);
    }
}

void OrcaInterface::setUpSyncExpander() {
    const bool outputs = syncIo_.setAOutputs(kSyncOutputs, 0);
    if (!apply(syncIo_, kSyncSettings) || !outputs) {
        logFailure(LED_SYNC_DEVICE_NAME);
    }
}

void OrcaInterface::openEthLedExpander() {
    const I2CAddress place = findDevice(ETH_LED_DEVICE_NAME);
    ethLedIo_.init(static_cast<int>(place.bus), static_cast<int>(place.address), false);
    const bool outputs = ethLedIo_.setAOutputs(kPsuLeds, 0);
    if (!ethLedIo_.setAOpenDrain(kPsuLeds) || !outputs) {
        logFailure(ETH_LED_DEVICE_NAME);
    }
}

Sx1509b* OrcaInterface::getQsfpIo(int cage, int index) {
    return qsfpIo_.data() + (cage * 2 + index);
}

bool OrcaInterface::setPsuModuledLed(int module, PSULedColorType colour) {
    if (module != 0 && module != 1) {
        return false;
    }
    return ethLedIo_.setValueA(static_cast<std::uint8_t>(kPsuLedPins[module]), colour != PinLow ? 1 : 0,
                               false);
}

}  // namespace Valen
