#include <map>
#include <set>

#include "Tools/boardsim/Board/Json/PartFields.h"

namespace boardsim {
namespace {

constexpr std::size_t kLongestName = 64;
constexpr std::size_t kMostBuses = 64;
constexpr std::uint64_t kLastBus = 255;
constexpr NumberForm kAddress{0x77, 0x03, 2};  // the others are reserved by the bus
constexpr std::size_t kMostBytes = 65536;
constexpr std::int32_t kColdest = -128 * 16;
constexpr std::int32_t kHottest = 128 * 16 - 1;

void checkDevice(const JsonPlace& place, const I2cDevice& device) {
    if (device.sixteenths != 0 && device.chip != I2cChip::TemperatureSensor) {
        place.member("celsius").refuse("only a temperature-sensor has it");
    }
    if (!device.contents.empty() && device.chip != I2cChip::Eeprom) {
        place.member("contents").refuse("only an eeprom has it");
    }
    if (device.identity && (device.chip != I2cChip::Eeprom || !device.contents.empty())) {
        place.member("identity").refuse("only an eeprom without contents has it");
    }
}

void checkGeometry(const JsonPlace& place, const EepromGeometry& geometry) {
    if (geometry.bytes % geometry.pageBytes != 0) {
        place.member("page_bytes").refuse("the memory is not a number of pages");
    }
}

void checkBuses(const JsonPlace& place, const I2cDescription& i2c) {
    std::set<unsigned> numbers;
    std::set<std::string> names;
    std::set<std::pair<unsigned, unsigned>> places;
    for (std::size_t i = 0; i < i2c.buses.size(); ++i) {
        const JsonPlace bus = place.member("buses").element(i);
        if (!numbers.insert(i2c.buses[i].number).second) {
            bus.member("number").refuse("another bus has it");
        }
        if (!i2c.buses[i].name.empty() && !names.insert(i2c.buses[i].name).second) {
            bus.member("name").refuse("another bus has it");
        }
    }
    for (std::size_t i = 0; i < i2c.devices.size(); ++i) {
        const I2cDevice& device = i2c.devices[i];
        const JsonPlace there = place.member("devices").element(i);
        if (!numbers.contains(device.bus)) {
            there.member("bus").refuse("there is no such bus");
        }
        if (!places.emplace(device.bus, device.address).second) {
            there.member("address").refuse("another device of the bus has it");
        }
        if (!device.name.empty() && !names.insert(device.name).second) {
            there.member("name").refuse("a bus or another device has it");
        }
        if (device.memory().size() > i2c.eeprom.bytes) {
            there.refuse("what is in it is larger than an eeprom");
        }
    }
}

Codec<std::uint64_t> decimalDigits() {
    constexpr std::uint64_t kThirteenDigits = 9'999'999'999'999;
    return number<std::uint64_t>({kThirteenDigits});
}

Codec<std::string> revision() {
    constexpr std::size_t kCharacters = 3;
    const Codec<std::string> any = text(kCharacters);
    return {[any](const JsonPlace& place) {
                std::string characters = any.read(place);
                if (characters.size() != kCharacters) {
                    place.refuse("want three characters");
                }
                return characters;
            },
            any.write};
}

}  // namespace

Codec<I2cDescription> i2cBuses() {
    return record<I2cDescription>(checkBuses);
}

template <>
const std::vector<Field<DeviceField>>& fieldsOf() {
    constexpr NumberForm kSuffix{0xFFFFF, 0, 5};
    static const std::vector<Field<DeviceField>> fields{
        required("serial", &DeviceField::serial, decimalDigits()),
        required("suffix", &DeviceField::suffix, number<std::uint32_t>(kSuffix)),
        required("values", &DeviceField::values, arrayOf<std::uint64_t, 2>(word<std::uint64_t>())),
    };
    return fields;
}

template <>
const std::vector<Field<PcbField>>& fieldsOf() {
    static const std::vector<Field<PcbField>> fields{
        required("major", &PcbField::major, number<std::uint16_t>({0xFFFF})),
        required("minor", &PcbField::minor, number<std::uint16_t>({0xFFFF})),
        required("revision", &PcbField::revision, revision()),
    };
    return fields;
}

template <>
const std::vector<Field<IdentityMemory>>& fieldsOf() {
    constexpr std::size_t kMostMacs = 16;
    constexpr std::size_t kLongestSandwich = 512;
    static const std::vector<Field<IdentityMemory>> fields{
        optional("device", &IdentityMemory::device, record<DeviceField>()),
        optional("pcb", &IdentityMemory::pcb, record<PcbField>()),
        omittable("macs", &IdentityMemory::macs, listOf(macAddress(), kMostMacs)),
        omittable("sandwich", &IdentityMemory::sandwich, hexText(kLongestSandwich)),
    };
    return fields;
}

template <>
const std::vector<Field<I2cBusName>>& fieldsOf() {
    static const std::vector<Field<I2cBusName>> fields{
        required("number", &I2cBusName::number, number<unsigned>({kLastBus})),
        omittable("name", &I2cBusName::name, fileName(kLongestName)),
    };
    return fields;
}

template <>
const std::vector<Field<I2cDevice>>& fieldsOf() {
    static const std::vector<Field<I2cDevice>> fields{
        required("bus", &I2cDevice::bus, number<unsigned>({kLastBus})),
        required("address", &I2cDevice::address, number<std::uint8_t>(kAddress)),
        required(
            "chip", &I2cDevice::chip,
            choice<I2cChip>({"expander", "temperature-sensor", "eeprom", "video-encoder", "power-supply"})),
        omittable("name", &I2cDevice::name, fileName(kLongestName)),
        omittable("celsius", &I2cDevice::sixteenths, sixteenths(kColdest, kHottest)),
        omittable("contents", &I2cDevice::contents, hexText(kMostBytes)),
        optional("identity", &I2cDevice::identity, record<IdentityMemory>()),
    };
    return fields;
}

template <>
const std::vector<Field<EepromGeometry>>& fieldsOf() {
    static const std::vector<Field<EepromGeometry>> fields{
        required("bytes", &EepromGeometry::bytes, number<std::size_t>({kMostBytes, 1})),
        required("page_bytes", &EepromGeometry::pageBytes, number<std::size_t>({kMostBytes, 1})),
        required("address_bytes", &EepromGeometry::addressBytes, number<std::size_t>({2, 1})),
    };
    return fields;
}

template <>
const std::vector<Field<I2cDescription>>& fieldsOf() {
    static const std::vector<Field<I2cDescription>> fields{
        required("buses", &I2cDescription::buses, listOf(record<I2cBusName>(), kMostBuses)),
        omittable("eeprom", &I2cDescription::eeprom, record<EepromGeometry>(checkGeometry)),
        required("devices", &I2cDescription::devices, listOf(record<I2cDevice>(checkDevice))),
    };
    return fields;
}

}  // namespace boardsim
