#include <fcntl.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Tools/boardinfo/Sections/Sections.h"
#include "Tools/boardinfo/ValueText.h"
#include "Vl/Common/Files/Descriptor.h"
#include "Vl/Common/Files/ExactIO.h"
#include "Vl/HAL/Bus/W1Util.h"
#include "Vl/HAL/Chips/W1EEPROM.h"

namespace boardinfo::sections {
namespace {

using Valen::HAL::W1EEPROM;
using Valen::HAL::W1Util;
using Slave = W1Util::W1Handle;

constexpr int kSerialReads = 3;
constexpr double kStepsPerDegree = 16;

std::vector<Slave> allSlaves() {
    Valen::vlslist<Slave> found;
    W1Util::FindW1(found, W1Util::kAnyFamily, W1Util::kAllBusses);
    std::vector<Slave> slaves(found.begin(), found.end());
    std::ranges::sort(slaves, {}, &Slave::value);
    return slaves;
}

/// In sixteenths of a degree, as the sensor's driver gives it.
std::optional<std::int32_t> reading(Slave sensor) {
    const auto file = Valen::Descriptor::open(W1Util::filePath(sensor, "temp").c_str(), O_RDONLY);
    std::array<std::byte, sizeof(std::int32_t)> bytes{};
    if (Valen::readExact(file.get(), bytes) != static_cast<ssize_t>(bytes.size())) {
        return std::nullopt;
    }
    const auto value = std::bit_cast<std::int32_t>(bytes);
    constexpr std::int32_t kInvalid = -1;
    return value == kInvalid ? std::nullopt : std::optional(value);
}

void askThermometer(Row& row, Slave slave) {
    const auto sixteenths = reading(slave);
    if (!sixteenths) {
        row = failed(row.name);
        return;
    }
    row.value = *sixteenths / kStepsPerDegree;
    row.unit = "°C";
}

void askEeprom(Row& row, Slave slave) {
    W1EEPROM eeprom(slave);
    Valen::HaldenSerial serial;
    if (!eeprom.match(slave, W1EEPROM::kAnyCardType) || !eeprom.ReadHaldenSerial(serial, kSerialReads)) {
        row = failed(row.name);
        return;
    }
    row.value = std::string(eeprom.version().toString().c_str());
    row.with("serial", std::to_string(serial.number));
}

struct Family {
    const char* kind;
    void (*ask)(Row&, Slave);
};

constexpr int kSwitchEeprom = 0x0A;

const Family* familyOf(Slave slave) {
    static const std::map<int, Family> families{
        {W1Util::kIdentityEeprom, {"EEPROM", askEeprom}},
        {kSwitchEeprom, {"EEPROM", askEeprom}},
        {W1Util::kTemperatureSensor, {"thermometer", askThermometer}},
    };
    const auto found = families.find(static_cast<int>(slave.family()));
    return found != families.end() ? &found->second : nullptr;
}

Row rowOf(Slave slave) {
    Row row{slave.name(), State::Ok};
    const Family* family = familyOf(slave);
    if (family != nullptr) {
        family->ask(row, slave);
    }
    return row.with("kind", std::string(family != nullptr ? family->kind : "unknown"))
        .with("bus", std::int64_t{W1Util::findBus(slave)});
}

}  // namespace

Section oneWire(Board& /*board*/) {
    Section section{"chips on 1-Wire", Form::Found};
    for (const Slave slave : allSlaves()) {
        section.rows.push_back(rowOf(slave));
    }
    return section;
}

}  // namespace boardinfo::sections
