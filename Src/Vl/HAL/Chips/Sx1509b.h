#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "Vl/HAL/Bus/I2CSlave.h"
#include "Vl/HAL/Chips/Sx1509bRegisters.h"

namespace Valen {

/// One SX1509B I/O expander: two ports, A and B, of eight pins each. Owns its connection to the I2C bus.
///
/// A shadow of the direction and data registers makes it possible to change single pins without reading the
/// chip, to defer changes and send them together, and to restore a chip that lost its power. Only init()
/// reads the shadow from the chip; from then on it holds what is wanted, also after a failed write, so that
/// the next change or reinitRegisters() sends it. Operations block for their transfers; failures are results,
/// nothing is logged or thrown. Not thread-safe. Source: data sheet of the SX1509B.
class Sx1509b {
public:
    static constexpr std::array<std::uint8_t, 16> regIonXAddress = Sx1509bRegisters::RegIOn;

    /// Closed, with a shadow of zeros.
    Sx1509b() = default;
    /// As init(), without its result.
    Sx1509b(int bus, int slave, bool flag);

    /// Opens the bus, selects the slave and reads the shadow. Deferred changes are forgotten. An expander
    /// that is open may be opened anew.
    /// @param slave 7-bit address of the chip.
    /// @param flag  handed on to I2CSlave::init.
    /// @return 0 on success; 1: the bus cannot be opened; 2: the slave cannot be selected; 3: the chip does
    ///         not answer. The shadow stays as it was unless the result is 0.
    int init(int bus, int slave, bool flag);

    /// @return "sx1509b: 3-62" for slave 62 (0x3E) on bus 3.
    std::string dbg_print() const;

    /// @return the levels of the port's pins, a bit each; -1 on failure.
    int getInputA();
    int getInputB();

    /// Drives one pin, 0 to 7 of the port, high for any `value` but 0. Writes nothing when the shadow has
    /// that level already, deferred or not, and leaves a `deferred` change to writeDataRegisters(). There is
    /// no pin above 7: nothing changes. @return false when a write failed.
    bool setValueA(std::uint8_t pin, std::uint8_t value, bool deferred);
    bool setValueB(std::uint8_t pin, std::uint8_t value, bool deferred);

    /// Makes the pins in `mask` outputs with their levels from `values`. Levels are written before
    /// directions, so that no pin ever drives an old level. A 1 of `values` outside `mask` is set, too:
    /// meant.
    /// @return false when a write failed; the directions are not written after the levels failed.
    bool setAOutputs(std::uint8_t mask, std::uint8_t values);
    bool setBOutputs(std::uint8_t mask, std::uint8_t values);

    /// Sets directions (1 is an input) and levels of the whole port; levels first. @return as setAOutputs().
    bool setADirection(std::uint8_t direction, std::uint8_t data);
    bool setBDirection(std::uint8_t direction, std::uint8_t data);

    // Write one register that has no shadow. @return false when the write failed.
    bool setInADisable(std::uint8_t value);
    bool setInBDisable(std::uint8_t value);
    bool setAOpenDrain(std::uint8_t value);
    bool setBOpenDrain(std::uint8_t value);
    bool setLedAEnable(std::uint8_t value);
    bool setLedBEnable(std::uint8_t value);
    bool setSenseHighB(std::uint8_t value);
    bool setClock(std::uint8_t value);
    bool setMisc(std::uint8_t value);
    /// The LED intensity of I/O `io`: 0 to 7 are port A's pins, 8 to 15 port B's. It must be one of these.
    bool setIOnX(std::uint8_t io, std::uint8_t value);

    /// @return the pins of port B that saw their edge, a bit each; -1 on failure.
    int getEvtStatusB();
    /// Clears the events of the pins whose bit is 1. @return false when the write failed.
    bool setEvtStatusB(std::uint8_t value);

    /// Sends the deferred changes, those of both ports in one transfer. What was deferred is not deferred any
    /// more, even if the write fails. @return false when it failed.
    bool writeDataRegisters();

    /// Finds out whether the chip was reset behind our back, from its directions.
    /// @return 1 when they are not the shadow's, 0 when they are, -1 when the chip does not answer.
    int detectReset();
    /// Writes the shadow to the chip, directions first. What has no shadow is the caller's to write again.
    /// @return false when a write failed; the data are not written after the directions failed.
    bool reinitRegisters();

private:
    struct Port {
        std::uint8_t dir = 0;
        std::uint8_t data = 0;
    };

    /// What of this and of the chip belongs to one port.
    struct Bank {
        Port Sx1509b::*shadow;
        bool Sx1509b::*pending;
        Sx1509bRegisters::Register data;
        Sx1509bRegisters::Register direction;
    };
    static const Bank kA;
    static const Bank kB;

    bool setValue(const Bank& bank, std::uint8_t pin, std::uint8_t value, bool deferred);
    bool setOutputs(const Bank& bank, std::uint8_t mask, std::uint8_t values);
    bool setDirection(const Bank& bank, std::uint8_t direction, std::uint8_t data);
    bool writeData();

    Port a_;
    Port b_;
    bool pendingA_ = false;
    bool pendingB_ = false;
    I2CSlave i2c_;
    int bus_ = 0;
    int slave_ = 0;
};

}  // namespace Valen
