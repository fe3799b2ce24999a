#pragma once

#include <cstdint>

namespace boardsim {

enum class I2cDirection { Write, Read };

/// A chip on an I2C bus, as the bus sees it: conditions and bytes. Not thread-safe.
/// Source: NXP UM10204, section 3.1.
class I2cTarget {
public:
    I2cTarget() = default;
    I2cTarget(const I2cTarget&) = delete;
    I2cTarget& operator=(const I2cTarget&) = delete;
    virtual ~I2cTarget() = default;

    /// A start or repeated start condition, followed by this chip's address.
    /// @return whether the chip acknowledges its address.
    virtual bool start(I2cDirection direction) = 0;

    /// A byte from the master. @return whether the chip acknowledges it.
    virtual bool take(std::uint8_t byte) = 0;

    /// A byte for the master, which does not ask before it takes one.
    virtual std::uint8_t give() = 0;

    /// The stop condition at the end of a transfer in which the chip took part.
    virtual void stop() {}

    /// The supply fails and comes back: everything volatile has its power-on value.
    virtual void losePower() = 0;
};

}  // namespace boardsim
