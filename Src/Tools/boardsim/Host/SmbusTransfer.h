#pragma once

#include <linux/i2c.h>

#include <cstdint>
#include <system_error>

#include "Tools/boardsim/Models/I2cBus.h"

namespace boardsim {

/// An SMBus operation as the kernel describes it.
struct SmbusOperation {
    bool reads = false;  ///< I2C_SMBUS_READ
    std::uint8_t command = 0;
    std::uint32_t kind = 0;  ///< I2C_SMBUS_QUICK, … I2C_SMBUS_I2C_BLOCK_DATA
};

/// How many bytes of its data block an operation takes and gives; 0 for those that have none.
/// @return nothing for an operation that the kernel does not have.
std::optional<std::size_t> smbusDataBytes(const SmbusOperation& operation);

/// Whether an operation's data block goes in, before, and comes out, after it.
bool takesSmbusData(const SmbusOperation& operation);
bool givesSmbusData(const SmbusOperation& operation);

/// Whether an adapter with these I2C_FUNC_… bits can do it.
bool isSmbusPossible(const SmbusOperation& operation, unsigned long functions);

/// Does an operation in I2C messages, as the kernel does on an adapter that knows nothing else.
/// @param data the operation's data block, unused by those that have none.
/// @return EINVAL for a block longer than 32 bytes, EPROTO for such a block from the chip, or the error of
/// the bus.
std::errc smbusTransfer(I2cBus& bus, std::uint8_t address, const SmbusOperation& operation,
                        i2c_smbus_data& data);

}  // namespace boardsim
