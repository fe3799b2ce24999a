#pragma once

#include <cstdint>

#include "Vl/HAL/Bus/MDIO.h"

namespace Valen::HAL {

/// A PHY behind the MDIO master core in the FPGA. The core has one 32-bit register: written, it is a clause
/// 22 management frame to send; read, its top bits tell that it is busy and its low 16 bits are what the PHY
/// answered. Does not own the register, which must stay mapped. Objects on the same core exclude each other
/// no more than the core does.
///
/// An access waits for the core, up to 100 ms (a read twice), sleeping 5 µs between looks; a core that stays
/// busy makes it fail, with a line in the log (CPCardInterface, SERVICE).
/// Source: IEEE 802.3, clause 22.2.4.5, "Management frame structure".
class FpgaMdio : public MDIO {
public:
    /// @param core       the core's register; null makes every access fail.
    /// @param phyAddress 0 to 31; only its low five bits, and a register number's, reach the bus.
    FpgaMdio(volatile std::uint32_t* core, int phyAddress);

    bool setReg(int reg, int value) override;
    int getReg(int reg) override;
    void changePhyAddress(int phyAddress) override;

private:
    /// @return the low 16 bits of the core's register once none of `busyBits` is set, or kFailed.
    int waitIdle(std::uint32_t busyBits);
    std::uint32_t addressed(std::uint32_t frame, int reg) const;

    volatile std::uint32_t* core_;
    int phyAddress_;
};

}  // namespace Valen::HAL
