#include "Tools/boardsim/Board/I2cDevices.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <stdexcept>

#include "Tools/boardsim/Board/I2cTrace.h"
#include "Tools/boardsim/Host/EepromFile.h"
#include "Tools/boardsim/Host/I2cBusFile.h"
#include "Tools/boardsim/Models/VideoChip.h"

namespace boardsim {
namespace {

constexpr std::uint64_t kLargestByte = 0xFF;
constexpr std::uint64_t kLargestWord = 0xFFFF;

[[noreturn]] void refuse(const Fault& fault, const std::string& why) {
    throw std::invalid_argument("--fault " + fault.text + ": " + why);
}

void wantNoValue(const Fault& fault) {
    if (!fault.value.empty()) {
        refuse(fault, fault.action + " has no value");
    }
}

/// Actions that end a transfer, and with which error.
struct Ending {
    std::string_view action;
    std::errc error;
};
constexpr std::array<Ending, 4> kEndings{{
    {"nack", std::errc::no_such_device_or_address},       // nobody acknowledges the address
    {"refuse", static_cast<std::errc>(EREMOTEIO)},        // nobody acknowledges a byte
    {"timeout", std::errc::timed_out},                    // the clock is held low
    {"lost", std::errc::resource_unavailable_try_again},  // another master won the bus
}};

int sixteenthsOf(const Fault& fault) {
    double celsius = 0;
    const char* const last = fault.value.data() + fault.value.size();
    const auto [end, error] = std::from_chars(fault.value.data(), last, celsius);
    // Of what is no number at all every comparison is false.
    if (error != std::errc{} || end != last || !(celsius >= -128 && celsius < 128)) {
        refuse(fault, "celsius wants a temperature from -128 to 127.9375");
    }
    return static_cast<int>(celsius * 16);
}

bool reads(const I2cEvent& event) {
    return std::any_of(event.messages.begin(), event.messages.end(),
                       [](const I2cMessage& message) { return message.direction == I2cDirection::Read; });
}

}  // namespace

I2cDevices::I2cDevices(const I2cDescription& description) : description_(description) {
    for (const I2cBusName& bus : description_.buses) {
        buses_.try_emplace(bus.number);
    }
    for (const I2cDevice& device : description_.devices) {
        Chip chip = makeChip(device, description_.eeprom);
        buses_.at(device.bus).attach(device.address, *chip.target);
        chips_.emplace(std::pair(device.bus, device.address), std::move(chip));
    }
}

I2cDevices::Chip I2cDevices::makeChip(const I2cDevice& device, const EepromGeometry& geometry) {
    switch (device.chip) {
        case I2cChip::Expander: {
            auto expander = std::make_unique<Sx1509>();
            Sx1509* const known = expander.get();
            return {std::move(expander), nullptr, known};
        }
        case I2cChip::TemperatureSensor: {
            auto sensor = std::make_unique<Lm75>();
            Lm75* const known = sensor.get();
            known->feel(device.sixteenths);
            return {std::move(sensor), known, nullptr};
        }
        case I2cChip::Eeprom: {
            auto eeprom = std::make_unique<I2cEeprom>(geometry);
            eeprom->fill(device.memory());
            return {std::move(eeprom)};
        }
        case I2cChip::VideoEncoder:
        case I2cChip::PowerSupply:
            break;
    }
    return {std::make_unique<VideoChip>()};
}

std::vector<ActingFile> I2cDevices::files() {
    std::vector<ActingFile> files;
    for (const I2cBusName& bus : description_.buses) {
        const auto hasDriver = [this, number = bus.number](std::uint8_t address) {
            return std::any_of(
                description_.devices.begin(), description_.devices.end(), [&](const I2cDevice& device) {
                    return device.bus == number && device.address == address && device.hasDriver();
                });
        };
        files.push_back(i2cBusFile("/dev/" + bus.kernelName(), buses_.at(bus.number), hasDriver));
    }
    const EepromGeometry& eeprom = description_.eeprom;
    for (const I2cDevice& device : description_.devices) {
        if (device.chip == I2cChip::Eeprom) {
            files.push_back(
                eepromFile(device.directory() + "/eeprom", buses_.at(device.bus),
                           {device.address, eeprom.bytes, eeprom.pageBytes, eeprom.addressBytes}));
        }
    }
    return files;
}

bool I2cDevices::apply(const Fault& fault) {
    if (fault.kind != "i2c" || buses_.empty()) {
        return false;
    }
    const Place place = placeOf(fault);
    const Chip* chip = nullptr;
    if (place.address) {
        const auto found = chips_.find({place.bus, *place.address});
        if (found == chips_.end()) {
            refuse(fault, "there is no chip at this address");
        }
        chip = &found->second;
    }
    buses_.at(place.bus).addFault(place.address, faultOf(fault, chip));
    return true;
}

void I2cDevices::listen(const Listener& listener) {
    for (auto& [number, bus] : buses_) {
        bus.listen([listener, name = "i2c-" + std::to_string(number)](const I2cEvent& event) {
            listener(describe(name, event), reads(event));
        });
    }
}

I2cDevices::Place I2cDevices::placeOf(const Fault& fault) const {
    for (const I2cDevice& device : description_.devices) {
        if (!device.name.empty() && device.name == fault.device) {
            return {device.bus, device.address};
        }
    }
    const std::size_t sign = fault.device.find('@');
    const std::optional<unsigned> bus = busNamed(std::string_view(fault.device).substr(0, sign));
    if (!bus) {
        refuse(fault, "there is no such chip and no such bus");
    }
    if (sign == std::string::npos) {
        return {*bus, std::nullopt};
    }
    const std::optional<std::uint64_t> address = wholeNumber(std::string_view(fault.device).substr(sign + 1));
    if (!address || *address >= I2cBus::kAddresses) {
        refuse(fault, "an address is a number from 0 to 0x7f");
    }
    return {*bus, static_cast<std::uint8_t>(*address)};
}

std::optional<unsigned> I2cDevices::busNamed(std::string_view name) const {
    const auto found =
        std::find_if(description_.buses.begin(), description_.buses.end(), [&](const I2cBusName& bus) {
            return bus.kernelName() == name || (!bus.name.empty() && bus.name == name);
        });
    return found == description_.buses.end() ? std::nullopt : std::optional(found->number);
}

I2cFault I2cDevices::faultOf(const Fault& fault, const Chip* chip) const {
    I2cFault result;
    result.schedule = fault.schedule;
    const auto* const ending = std::find_if(kEndings.begin(), kEndings.end(),
                                            [&](const Ending& each) { return each.action == fault.action; });
    if (ending != kEndings.end()) {
        wantNoValue(fault);
        result.error = ending->error;
    } else if (fault.action == "value") {
        result.value = static_cast<std::uint8_t>(numberOf(fault, kLargestByte));
    } else if (fault.action == "power-loss" && chip != nullptr) {
        wantNoValue(fault);
        // Once is what the words say; a chip that never keeps its registers has to be asked for.
        result.schedule.limitTo(1);
        result.event = [target = chip->target.get()] { target->losePower(); };
    } else if (fault.action == "celsius" && chip != nullptr && chip->sensor != nullptr) {
        result.event = [sensor = chip->sensor, felt = sixteenthsOf(fault)] { sensor->feel(felt); };
    } else if (fault.action == "pins" && chip != nullptr && chip->expander != nullptr) {
        const auto levels = static_cast<std::uint16_t>(numberOf(fault, kLargestWord));
        result.event = [expander = chip->expander, levels] { expander->drive(levels); };
    } else {
        refuse(fault,
               "a chip can nack, refuse, timeout, lost, value=BYTE, power-loss; a temperature sensor "
               "celsius=DEGREES, an expander pins=WORD");
    }
    return result;
}

}  // namespace boardsim
