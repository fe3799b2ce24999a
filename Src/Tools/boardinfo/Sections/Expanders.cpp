#include <string>

#include "Tools/boardinfo/Board.h"
#include "Tools/boardinfo/Sections/Presence.h"
#include "Tools/boardinfo/Sections/Sections.h"
#include "Tools/boardinfo/ValueText.h"
#include "Vl/HAL/Board/OrcaInterface.h"
#include "Vl/HAL/Bus/I2CRegisteredDevice.h"
#include "Vl/HAL/Chips/Sx1509b.h"

namespace boardinfo::sections {
namespace {

using Valen::I2CRegisteredDevice;
using Valen::OrcaInterface;
using Valen::Sx1509b;

constexpr int kPortDigits = 2;

/// The levels of an expander's pins.
Row levels(const char* name, Sx1509b& expander, bool isThere) {
    const int a = expander.getInputA();
    const int b = a < 0 ? a : expander.getInputB();
    if (a < 0 || b < 0) {
        return {name, silence(isThere)};
    }
    return Row{name, State::Ok}
        .with("port A", hexText(static_cast<unsigned>(a), kPortDigits))
        .with("port B", hexText(static_cast<unsigned>(b), kPortDigits));
}

/// The Ethernet LEDs' expander through a connection of our own: opening one only reads.
Row ethLeds() {
    const Valen::I2CAddress place = I2CRegisteredDevice::getAddressOf(OrcaInterface::ETH_LED_DEVICE_NAME);
    if (place.name[0] == '\0') {
        return notPresent(OrcaInterface::ETH_LED_DEVICE_NAME);
    }
    Sx1509b expander(static_cast<int>(place.bus), static_cast<int>(place.address), false);
    return levels(OrcaInterface::ETH_LED_DEVICE_NAME, expander, true);
}

constexpr const char* kQsfpBuses[] = {"qsfp0_0", "qsfp0_1", "qsfp1_0", "qsfp1_1"};
constexpr int kChipsPerCage = 2;

}  // namespace

Section expanders(Board& board) {
    Section section{"expanders"};
    OrcaInterface* orca = board.orca();
    if (orca == nullptr) {
        for (const char* name : kQsfpBuses) {
            section.rows.push_back(notPresent(name));
        }
        section.rows.push_back(notPresent(OrcaInterface::LED_SYNC_DEVICE_NAME));
        section.rows.push_back(notPresent(OrcaInterface::ETH_LED_DEVICE_NAME));
        return section;
    }
    int index = 0;
    for (const char* bus : kQsfpBuses) {
        Sx1509b& expander = *orca->getQsfpIo(index / kChipsPerCage, index % kChipsPerCage);
        section.rows.push_back(levels(bus, expander, I2CRegisteredDevice::getBusOf(bus) >= 0));
        ++index;
    }
    const char* sync = OrcaInterface::LED_SYNC_DEVICE_NAME;
    section.rows.push_back(levels(sync, *orca->getSyncIo(), isRegistered(sync)));
    section.rows.push_back(ethLeds());
    return section;
}

}  // namespace boardinfo::sections
