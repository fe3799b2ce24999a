#pragma once

#include <array>
#include <cstdint>

#include "Tools/boardsim/Models/RegisterChip.h"

namespace boardsim {

/// The 16-channel I/O expander SX1509B: all registers, its pins, edge detection and the interrupt line. LEDs
/// do not blink and keys are not scanned. Register pairs have port B at the even number, port A behind it;
/// pins 0 to 7 are port A, 8 to 15 port B.
///
/// Refused with no acknowledge: writes to registers that the data sheet reserves, does not list or declares
/// read-only. Registers that are not there read as 0. Not thread-safe.
/// Source: Semtech SX1508B/SX1509B data sheet, rev. 4; section numbers are beside what they tell.
class Sx1509 : public RegisterChip {
public:
    Sx1509();

    /// The levels that the board's other parts give to the pins from now on; high unless told otherwise.
    void drive(std::uint16_t levels);

    /// The level of every pin: what an output drives, and what others drive on the rest. An open-drain
    /// output leaves its pin to others while it is not low.
    std::uint16_t pins() const;

    /// Whether the interrupt line is pulled low.
    bool interrupts() const { return word(kInterruptSource) != 0; }

    void losePower() override;

protected:
    bool writeRegister(std::uint8_t number, std::uint8_t value) override;
    std::uint8_t readRegister(std::uint8_t number) override;
    std::uint8_t following(std::uint8_t number) const override;

private:
    static constexpr std::size_t kRegisters = 0x80;

    // Register pairs, by the number of port B.
    static constexpr std::uint8_t kInterruptSource = 0x18;

    void reset();
    void store(std::uint8_t number, std::uint8_t value);
    std::uint16_t word(std::uint8_t pair) const;
    void setWord(std::uint8_t pair, std::uint16_t value);
    void clearEvents(std::uint16_t pins);
    void noticeEdges();
    std::uint8_t readData(std::uint8_t number);

    std::array<std::uint8_t, kRegisters> registers_{};
    std::uint16_t driven_ = 0xFFFF;
    std::uint16_t seen_ = 0xFFFF;  ///< levels when edges were looked for last
    bool resetBegun_ = false;      ///< the first byte of the reset sequence was written last
};

}  // namespace boardsim
