#pragma once

#include <cstdint>

#include "Tools/boardsim/Models/RegisterBlock.h"

namespace boardsim {

/// How a register of the FPGA tells a temperature.
enum class TemperatureCode : std::uint8_t {
    Shifted,  ///< whole degrees from bit 8 up; the low byte is a fraction and 0 here
    Offset,   ///< bits 0-7 are whole degrees plus 128; the others tell other things
};

/// A register of the FPGA that tells a temperature: one 32-bit word. Not thread-safe.
class TemperatureRegister final : public RegisterBlock {
public:
    static constexpr std::uint32_t kBytes = 4;

    /// @param others what the bits hold that tell no temperature.
    /// @param celsius in the range of the code: least() to largest().
    TemperatureRegister(TemperatureCode code, int celsius, std::uint32_t others = 0);

    std::uint32_t value() const { return value_; }

    void setCelsius(int celsius);
    /// All 32 bits, whatever they may mean.
    void setValue(std::uint32_t value) { value_ = value; }

    /// The range of what it can tell.
    int least() const { return code_ == TemperatureCode::Shifted ? 0 : -128; }
    int largest() const { return code_ == TemperatureCode::Shifted ? 0xFFFFFF : 127; }

    RegisterValue read(std::uint32_t offset, unsigned width) override;

    /// Says whether a program may write so: with an offset code there are outputs among the other bits. The
    /// memory behind the register is the program's to change.
    Refusal write(std::uint32_t offset, unsigned width, std::uint64_t value) override;

private:
    TemperatureCode code_;
    std::uint32_t value_;
};

}  // namespace boardsim
