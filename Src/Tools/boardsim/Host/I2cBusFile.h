#pragma once

#include <linux/i2c.h>

#include <cstdint>
#include <functional>
#include <span>

#include "Tools/boardsim/Host/ActingFile.h"
#include "Tools/boardsim/Models/I2cBus.h"

namespace boardsim {

/// What our adapters can do: everything that needs no hardware of its own.
inline constexpr unsigned long kAllI2cFunctions =
    I2C_FUNC_I2C | I2C_FUNC_NOSTART | I2C_FUNC_SMBUS_QUICK | I2C_FUNC_SMBUS_BYTE | I2C_FUNC_SMBUS_BYTE_DATA |
    I2C_FUNC_SMBUS_WORD_DATA | I2C_FUNC_SMBUS_PROC_CALL | I2C_FUNC_SMBUS_BLOCK_DATA |
    I2C_FUNC_SMBUS_BLOCK_PROC_CALL | I2C_FUNC_SMBUS_I2C_BLOCK;

/// One opening of "/dev/i2c-N": the kernel's i2c-dev interface to a bus, with the address that this opening
/// has chosen. Everything is refused as the kernel refuses it: EBUSY to choose an address whose chip has a
/// kernel driver, EINVAL for numbers out of range, EFAULT for memory that is not there, EOPNOTSUPP for what
/// the adapter cannot do (ten-bit addresses and packet error codes among it), ENOTTY for other requests, and
/// the errors of the bus. Not thread-safe. Source: the kernel's Documentation/i2c/dev-interface.rst,
/// linux/i2c-dev.h and linux/i2c.h.
class I2cBusFile {
public:
    using HasDriver = std::function<bool(std::uint8_t address)>;

    /// @param hasDriver whether a kernel driver is in charge of a chip.
    /// @param functions I2C_FUNC_… bits.
    I2cBusFile(I2cBus& bus, HasDriver hasDriver, unsigned long functions = kAllI2cFunctions)
        : bus_(bus), hasDriver_(std::move(hasDriver)), functions_(functions) {}

    Transfer read(std::span<std::byte> into);
    Transfer write(std::span<const std::byte> bytes);
    IoctlAnswer control(const IoctlCall& call);

private:
    IoctlAnswer choose(const IoctlCall& call);
    IoctlAnswer force(const IoctlCall& call);
    IoctlAnswer tellFunctions(const IoctlCall& call);
    IoctlAnswer transferMessages(const IoctlCall& call);
    IoctlAnswer transferSmbus(const IoctlCall& call);

    struct Request;
    static const Request kRequests[];

    I2cBus& bus_;
    HasDriver hasDriver_;
    unsigned long functions_;
    std::uint8_t address_ = 0;
};

/// "/dev/i2c-N" as an acting file.
ActingFile i2cBusFile(std::string path, I2cBus& bus, I2cBusFile::HasDriver hasDriver,
                      unsigned long functions = kAllI2cFunctions);

}  // namespace boardsim
