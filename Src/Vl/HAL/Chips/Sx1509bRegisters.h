#pragma once

#include <array>
#include <cstdint>

/// Registers of the SX1509B 16-channel I/O expander with LED drivers; data sheet, section "Register map".
/// Registers of bank B (I/O 8 to 15) stand before their twins of bank A (I/O 0 to 7); the address counts up
/// within a transfer, so that a word at a B register has B in its low byte and A in its high byte.
namespace Valen::Sx1509bRegisters {

enum Register : std::uint8_t {
    RegInputDisableB = 0x00,
    RegInputDisableA = 0x01,
    RegOpenDrainB = 0x0A,
    RegOpenDrainA = 0x0B,
    RegDirB = 0x0E,  // a 1 is an input
    RegDirA = 0x0F,
    RegDataB = 0x10,  // reads the pins, writes the outputs
    RegDataA = 0x11,
    RegSenseHighB = 0x14,
    RegEventStatusB = 0x1A,  // a written 1 clears
    RegClock = 0x1E,
    RegMisc = 0x1F,
    RegLEDDriverEnableB = 0x20,
    RegLEDDriverEnableA = 0x21,
};

/// RegIOn0 to RegIOn15: the LED intensities. What else an I/O has lies between, and not all have the same.
inline constexpr std::array<std::uint8_t, 16> RegIOn = {
    0x2A, 0x2D, 0x30, 0x33, 0x36, 0x3B, 0x40, 0x45,  // A
    0x4A, 0x4D, 0x50, 0x53, 0x56, 0x5B, 0x60, 0x65,  // B
};

}  // namespace Valen::Sx1509bRegisters
