#pragma once

#include <cstdint>

#include "Tools/boardsim/Models/I2cTarget.h"

namespace boardsim {

/// The way in which most chips show 8-bit registers over I2C: the first byte of a write is a register's
/// number, the next ones go into it and those behind it; a read goes on from the number written last. The
/// number survives the end of a transfer and is 0 after power-on.
class RegisterChip : public I2cTarget {
public:
    bool start(I2cDirection direction) override;
    bool take(std::uint8_t byte) override;
    std::uint8_t give() override;
    void losePower() override { pointer_ = 0; }

protected:
    /// @return whether the chip acknowledges the value.
    virtual bool writeRegister(std::uint8_t number, std::uint8_t value) = 0;
    virtual std::uint8_t readRegister(std::uint8_t number) = 0;

    /// The register after `number`.
    virtual std::uint8_t following(std::uint8_t number) const {
        return static_cast<std::uint8_t>(number + 1);
    }

private:
    std::uint8_t pointer_ = 0;
    bool wantsPointer_ = false;
};

}  // namespace boardsim
