#pragma once

#include <cstdint>

#include "Tests/HAL/BoardWorld.h"
#include "Tests/HAL/Bus/I2cCalls.h"
#include "Vl/HAL/Chips/Sx1509b.h"

/// A chip at 0x3E on bus 3 whose registers all differ, and whose inputs A and B read 0x3C and 0xA5.
class Sx1509bWorld : public BoardWorld {
protected:
    static constexpr std::uint8_t kSlave = 0x3E;

    Sx1509bWorld() {
        support::PrivateWorld::write("/dev/i2c-3", "");
        chip.registers[0x0E] = 0xF0;
        chip.registers[0x0F] = 0xFF;
        chip.registers[0x10] = 0xA5;
        chip.registers[0x11] = 0x3C;
    }

    /// An expander that is ready, with what that took forgotten.
    Valen::Sx1509b opened() {
        Valen::Sx1509b expander(3, kSlave, false);
        chip.calls.clear();
        return expander;
    }

    I2cCalls chip;
};
