#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/BoardPart.h"
#include "Tools/boardsim/Board/IdentityMemory.h"
#include "Tools/boardsim/Models/I2cEeprom.h"

namespace boardsim {

/// What can sit on an I2C bus.
enum class I2cChip : std::uint8_t { Expander, TemperatureSensor, Eeprom, VideoEncoder, PowerSupply };

/// A chip on a bus.
struct I2cDevice {
    unsigned bus = 0;
    std::uint8_t address = 0;
    I2cChip chip = I2cChip::Expander;
    std::string name;      ///< in the registry of devices; none when empty
    int sixteenths = 0;    ///< what a temperature sensor feels, in 1/16 degree Celsius
    std::string contents;  ///< of an EEPROM, byte for byte, when it is no identity memory
    std::optional<IdentityMemory> identity{};

    /// Whether a kernel driver is in charge of it, so that programs use what the driver makes.
    bool hasDriver() const { return chip == I2cChip::Eeprom; }

    /// What an EEPROM holds from its first byte.
    std::string memory() const { return identity ? encodeIdentity(*identity) : contents; }

    /// "1-0048", as the kernel calls it.
    std::string kernelName() const;

    /// The kernel's directory of it.
    std::string directory() const;

    bool operator==(const I2cDevice&) const = default;
};

/// A bus and its name in the registry of devices; none when empty.
struct I2cBusName {
    unsigned number = 0;
    std::string name;

    /// "i2c-1", as the kernel calls it.
    std::string kernelName() const { return "i2c-" + std::to_string(number); }

    bool operator==(const I2cBusName&) const = default;
};

/// The I2C buses of a board.
struct I2cDescription {
    std::vector<I2cBusName> buses{};
    std::vector<I2cDevice> devices{};
    EepromGeometry eeprom{};

    bool operator==(const I2cDescription&) const = default;
};

/// The same without what a board lacks.
I2cDescription without(const BoardParts& missing, const I2cDescription& i2c);

/// The buses of the built-in board.
I2cDescription orcaI2c();

}  // namespace boardsim
