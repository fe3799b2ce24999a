#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace boardsim {

/// Bytes in an EEPROM that a checksum guards.
struct EepromRecord {
    std::size_t offset = 0;
    std::vector<std::uint8_t> data{};

    bool operator==(const EepromRecord&) const = default;
};

/// A 1-Wire EEPROM and what production wrote into it.
struct W1EepromPart {
    std::uint64_t serial = 0;
    std::vector<EepromRecord> records{};

    bool operator==(const W1EepromPart&) const = default;
};

/// A 1-Wire thermometer.
struct W1SensorPart {
    std::uint64_t serial = 0;
    std::uint16_t userData = 0;
    std::int32_t temperature = 0;  ///< in 1/16 degree Celsius

    bool operator==(const W1SensorPart&) const = default;
};

/// A 1-Wire bus and what is soldered to it.
struct W1BusPart {
    std::vector<W1EepromPart> eeproms{};
    std::vector<W1SensorPart> sensors{};

    bool operator==(const W1BusPart&) const = default;
};

/// A record as it lies in an EEPROM: CRC-16 of the data (polynomial 0x1021, from 0, neither reflected nor
/// inverted), high byte first, then the data.
std::vector<std::byte> encodeRecord(const std::vector<std::uint8_t>& data);

}  // namespace boardsim
