#include "Tools/boardsim/Board/W1Models.h"

#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>

#include "Tools/boardsim/Models/W1Eeprom.h"
#include "Tools/boardsim/Models/W1TempSensor.h"

namespace boardsim {
namespace {

[[noreturn]] void refuse(const Fault& fault, const std::string& why) {
    throw std::invalid_argument("--fault " + fault.text + ": " + why);
}

std::shared_ptr<W1Slave> make(const W1EepromPart& part) {
    auto eeprom = std::make_shared<W1Eeprom>(part.serial);
    for (const EepromRecord& record : part.records) {
        eeprom->preset(record.offset, encodeRecord(record.data));
    }
    return eeprom;
}

std::shared_ptr<W1Slave> make(const W1SensorPart& part) {
    auto sensor = std::make_shared<W1TempSensor>(part.serial);
    sensor->setUserData(part.userData);
    sensor->setTemperature(part.temperature);
    return sensor;
}

std::vector<std::unique_ptr<W1Bus>> makeBuses(const std::vector<W1BusPart>& parts) {
    std::vector<std::unique_ptr<W1Bus>> buses;
    for (const W1BusPart& part : parts) {
        const auto number = static_cast<unsigned>(buses.size() + 1);
        W1Bus& bus = *buses.emplace_back(std::make_unique<W1Bus>(number));
        for (const W1EepromPart& eeprom : part.eeproms) {
            bus.connect(make(eeprom));
        }
        for (const W1SensorPart& sensor : part.sensors) {
            bus.connect(make(sensor));
        }
        bus.search();
    }
    return buses;
}

void tear(W1Slave& slave, const Fault& fault) {
    auto* eeprom = dynamic_cast<W1Eeprom*>(&slave);
    if (eeprom == nullptr) {
        refuse(fault, "only EEPROMs are written");
    }
    eeprom->tearWrites(fault.schedule, numberOf(fault, W1Eeprom::kBytes));
}

void warm(W1Slave& slave, const Fault& fault) {
    auto* sensor = dynamic_cast<W1TempSensor*>(&slave);
    double celsius = 0;
    const char* last = fault.value.data() + fault.value.size();
    const auto [end, error] = std::from_chars(fault.value.data(), last, celsius);
    constexpr double kBeyondAnySensor = 1000;
    if (sensor == nullptr || error != std::errc{} || end != last ||
        !(std::abs(celsius) <= kBeyondAnySensor)) {
        refuse(fault, "want a thermometer and degrees Celsius");
    }
    sensor->setTemperature(static_cast<std::int32_t>(std::lround(celsius * 16)));
}

struct Action {
    std::string_view name;
    std::optional<FaultSchedule> W1Faults::*fault;
    void (*apply)(W1Slave&, const Fault&) = nullptr;  ///< instead
};

constexpr std::array<Action, 7> kActions{{
    {"unplug", &W1Faults::unplugged},
    {"rom-crc", &W1Faults::romErrors},
    {"crc", &W1Faults::crcErrors},
    {"short-read", &W1Faults::shortReads},
    {"short-write", &W1Faults::shortWrites},
    {"torn", nullptr, tear},
    {"value", nullptr, warm},
}};

}  // namespace

W1Models::W1Models(const std::vector<W1BusPart>& parts, Tell tell)
    : buses_(makeBuses(parts)), tree_(buses_, std::move(tell)) {}

void W1Models::apply(const Fault& fault) {
    W1Slave& slave = slaveNamed(fault);
    std::string names;
    for (const Action& action : kActions) {
        if (action.name != fault.action) {
            names.append(names.empty() ? "" : ", ").append(action.name);
        } else if (action.apply != nullptr) {
            return action.apply(slave, fault);
        } else {
            slave.faults().*action.fault = fault.schedule;
            return;
        }
    }
    refuse(fault, "no action '" + fault.action + "'; there are " + names);
}

W1Slave& W1Models::slaveNamed(const Fault& fault) const {
    for (const std::unique_ptr<W1Bus>& bus : buses_) {
        for (const std::shared_ptr<W1Slave>& slave : bus->slaves()) {
            if (slave->id().name() == fault.device) {
                return *slave;
            }
        }
    }
    refuse(fault, "no slave '" + fault.device + "' on any bus");
}

}  // namespace boardsim
