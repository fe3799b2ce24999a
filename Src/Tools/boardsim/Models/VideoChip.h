#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <utility>

#include "Tools/boardsim/Models/RegisterChip.h"

namespace boardsim {

/// A chip of 256 registers of 8 bits that keep what is written to them, such as a video encoder or the
/// controller of a power supply, of which nobody wants more. It is reached over I2C, or over SPI by a kernel
/// driver that shows the registers as a file. Not thread-safe.
class VideoChip : public RegisterChip {
public:
    using ResetValue = std::pair<std::uint8_t, std::uint8_t>;  ///< number and value of a register

    static constexpr std::size_t kRegisters = 256;

    /// @param resetValues those that are not zero after power-on.
    explicit VideoChip(std::initializer_list<ResetValue> resetValues = {});

    std::uint8_t at(std::uint8_t number) const { return registers_[number]; }
    void set(std::uint8_t number, std::uint8_t value) { registers_[number] = value; }

    void losePower() override;

protected:
    bool writeRegister(std::uint8_t number, std::uint8_t value) override;
    std::uint8_t readRegister(std::uint8_t number) override { return at(number); }

private:
    std::array<std::uint8_t, kRegisters> afterPowerOn_{};
    std::array<std::uint8_t, kRegisters> registers_{};
};

}  // namespace boardsim
