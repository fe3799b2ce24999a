#include <array>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <optional>
#include <string>

#include "Tools/boardinfo/Board.h"
#include "Tools/boardinfo/Sections/Presence.h"
#include "Tools/boardinfo/Sections/Sections.h"
#include "Vl/Common/Identity/HaldenSerial.h"
#include "Vl/Common/Identity/MACAddress.h"
#include "Vl/Common/Identity/SerialNo.h"
#include "Vl/Common/Identity/Version.h"
#include "Vl/Common/Lists/vlslist.h"
#include "Vl/HAL/Board/HD24Interface.h"
#include "Vl/HAL/Bus/W1Util.h"

namespace boardinfo::sections {
namespace {

using Valen::CPInterface;
using Valen::HaldenSerial;
using Valen::HAL::W1Util;

/// The EEPROM that a switch card brings along.
constexpr W1Util::Family kSwitchEeprom = 0x0A;

Value textOf(const Valen::Version& version) {
    return std::string(version.toString().c_str());
}

Value textOf(const Valen::SerialNo& serial) {
    return std::string(serial.toString().c_str());
}

/// "2023-11-14T22:13:20Z"; "never" for 0.
Value dateText(std::int32_t secondsSince1970) {
    if (secondsSince1970 == 0) {
        return std::string("never");
    }
    const std::time_t time = secondsSince1970;
    std::tm date{};
    gmtime_r(&time, &date);
    std::array<char, 32> text;
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &date);
    return std::string(text.data());
}

Row serialRow(const char* name, const HaldenSerial& serial) {
    std::array<char, 32> digits;
    std::snprintf(digits.data(), digits.size(), "%013llu", static_cast<unsigned long long>(serial.number));
    return answered(name, std::string(digits.data()))
        .with("produced", dateText(serial.productionDate))
        .with("serviced", dateText(serial.lastServiceDate));
}

Row macRow(CPInterface& cp, const char* name, Valen::BinaryData::MACAddressType type, bool isThere) {
    Valen::MACAddress address;
    return isThere && cp.getMAC(type, address) ? answered(name, std::string(address.toString().c_str()))
                                               : Row{name, silence(isThere)};
}

void askRom(CPInterface& cp, Section& section) {
    const bool isThere = exists(CPInterface::cpld_rom_file);
    const State silent = silence(isThere);
    section.rows.push_back(isThere && cp.checkROMData() ? answered("identity ROM", std::string("valid"))
                                                        : Row{"identity ROM", silent});
    Valen::Version version;
    HaldenSerial serial;
    const bool isKnown = isThere && cp.getCardID(version, serial);
    section.rows.push_back(isKnown ? answered("card ID", textOf(version)) : Row{"card ID", silent});
    section.rows.push_back(isKnown ? serialRow("card serial", serial) : Row{"card serial", silent});
    section.rows.push_back(macRow(cp, "MAC 0", Valen::BinaryData::FirstMac, isThere));
    section.rows.push_back(macRow(cp, "MAC 1", Valen::BinaryData::SecondMac, isThere));
}

bool hasSlave(W1Util::Family family) {
    Valen::vlslist<W1Util::W1Handle> slaves;
    W1Util::FindW1(slaves, family, W1Util::kAllBusses);
    return !slaves.empty();
}

void askOneWire(CPInterface& cp, Section& section) {
    Valen::SerialNo unique;
    const bool hasUnique = hasSlave(W1Util::kTemperatureSensor) && cp.getCardSerial(unique);
    section.rows.push_back(hasUnique ? answered("unique number", textOf(unique))
                                     : Row{"unique number", State::NotPresent});
    const bool isThere = hasSlave(kSwitchEeprom);
    Valen::Version version;
    Valen::SerialNo chip;
    HaldenSerial serial;
    if (!isThere || !cp.getSwitchCardID(version, chip, serial)) {
        const State silent = silence(isThere);
        section.rows.insert(
            section.rows.end(),
            {{"switch card ID", silent}, {"switch card serial", silent}, {"switch card number", silent}});
        return;
    }
    section.rows.push_back(answered("switch card ID", textOf(version)));
    section.rows.push_back(serialRow("switch card serial", serial));
    section.rows.push_back(answered("switch card number", textOf(chip)));
}

using ReadVersion = int (CPInterface::*)(Valen::Version&);

Row versionRow(CPInterface& cp, const char* name, const char* device, ReadVersion read) {
    constexpr int kNoDevice = -8;
    Valen::Version version;
    const int result = (cp.*read)(version);
    std::optional<Value> value;
    if (result == 1) {
        value = textOf(version);
    }
    return rowOf(name, value, result == kNoDevice && exists(std::string("/dev/") + device));
}

}  // namespace

Section identity(Board& board) {
    CPInterface& cp = board.common();
    Section section{"identity"};
    askRom(cp, section);
    askOneWire(cp, section);
    section.rows.push_back(versionRow(cp, "FPGA version", "fpga", &CPInterface::getFPGAVersion));
    section.rows.push_back(versionRow(cp, "CPLD version", "cpld", &CPInterface::getCPLDVersion));
    return section;
}

}  // namespace boardinfo::sections
