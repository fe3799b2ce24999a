#pragma once

#include <cstdint>

#include "Vl/Common/Files/Descriptor.h"

namespace Valen {

/// One open I2C bus and the slave on it that is talked to. Owns the descriptor of the bus device
/// "/dev/i2c-<number>" and closes it at the end; move-only. Closed and without a slave until init() and
/// selectSlave().
///
/// Each transfer blocks until the kernel has finished it and is reported by its result only: nothing is
/// logged or thrown. On a closed bus every transfer fails. Not thread-safe. Registers are numbered 0 to 255;
/// of a larger number the low eight bits are sent. Source: linux/i2c-dev.h and linux/i2c.h.
class I2CSlave {
public:
    /// Opens a bus for reading and writing, close-on-exec, in place of the one that was open before, which is
    /// closed even when the new one cannot be opened. The slave is not bound anew: call selectSlave().
    /// @param bus  the number in the device's name.
    /// @param flag kept, without a meaning here.
    /// @return whether the bus is open now.
    bool init(int bus, bool flag);

    /// Binds the bus to the slave with this 7-bit address for all that follows. @return false when the kernel
    /// refuses, which it does when a driver of its own has the slave. The address is kept even then.
    bool selectSlave(int address);

    /// Writes one byte, or 16 bits with the low byte first, to a register. @return whether the slave took it.
    bool write(int reg, std::uint8_t value);
    bool write16(int reg, std::uint16_t value);

    /// Reads one register. @return its value, 0 to 255; -1 on failure.
    int read8(int reg);
    /// Reads one byte, or 16 bits with the low byte first. @return false on failure, with `value` as it was.
    bool read(int reg, std::uint8_t& value);
    bool read16(int reg, std::uint16_t& value);

    /// Reads `length` bytes from register `reg` on, in one combined transfer whose read half has no repeated
    /// start, as the devices of these boards want it. `buffer` holds as many bytes as the low 16 bits of
    /// `length` say. @return false unless both halves are done; the buffer's contents are then unknown.
    bool readMultiAt(int reg, std::uint8_t* buffer, int length);

    /// Writes the low 16 bits of `length` as that many bytes of `data`, in one transfer.
    /// @return whether the slave took it.
    bool writeMulti(const void* data, int length);

    /// @return this object, unchanged.
    I2CSlave& check() { return *this; }

private:
    Descriptor fd_;
    int slave_ = -1;
    bool flag_ = false;
};

}  // namespace Valen
