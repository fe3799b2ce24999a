#pragma once

#include <array>
#include <cstdint>

#include "Tools/boardsim/Models/I2cTarget.h"

namespace boardsim {

/// A temperature sensor of the LM75 family with up to 12 bits. After power-on it gives 9 bits; the
/// configuration register chooses 9 to 12. In shutdown mode the temperature stays as it was converted last.
/// Registers are chosen by a pointer that survives the end of a transfer; two-byte registers come high byte
/// first, and over again when more is read. A pointer beyond 3 and a write to the temperature are refused: no
/// acknowledge. Conversions take no time. Not thread-safe.
/// Source: TI SBOS288 (TMP75), section "Programming", tables 5 to 11; NXP LM75B data sheet, section 7.4.
class Lm75 : public I2cTarget {
public:
    /// What the sensor feels from now on, in 1/16 degree Celsius, -2048 to 2047.
    void feel(int sixteenths);

    bool start(I2cDirection direction) override;
    bool take(std::uint8_t byte) override;
    std::uint8_t give() override;
    void losePower() override;

private:
    static constexpr std::size_t kRegisters = 4;

    std::uint16_t value(std::size_t number) const;
    bool put(std::uint8_t byte);
    void convert();

    /// Temperature (as converted, all bits), configuration, lower limit, upper limit.
    std::array<std::uint16_t, kRegisters> registers_ = afterPowerOn();
    static constexpr std::array<std::uint16_t, kRegisters> afterPowerOn() {
        return {
            0x0000,  // temperature: 0 degrees until the first conversion
            0x00,    // configuration: 9 bits, comparator mode, converting
            0x4B00,  // lower limit: 75 degrees
            0x5000,  // upper limit: 80 degrees
        };
    }

    int felt_ = 0;
    std::size_t pointer_ = 0;
    std::size_t position_ = 0;  ///< of the next byte in the register
    bool wantsPointer_ = false;
};

}  // namespace boardsim
