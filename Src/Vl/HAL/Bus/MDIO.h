#pragma once

namespace Valen::HAL {

/// Reads and writes the registers of one Ethernet PHY over its management bus (MDIO, clause 22 of IEEE 802.3:
/// 32 registers of 16 bits). One thread at a time; shared by pointer.
class MDIO {
public:
    /// What getReg() answers when the register cannot be read: all bits set.
    static constexpr int kFailed = -1;

    virtual ~MDIO() = default;
    /// Writes a register, 0 to 31; the low 16 bits of `value` count. @return false on failure.
    virtual bool setReg(int reg, int value) = 0;
    /// Reads a register, 0 to 31. @return its 16 bits, or kFailed.
    virtual int getReg(int reg) = 0;
    /// Turns to the PHY at another address, 0 to 31, for the accesses that follow.
    virtual void changePhyAddress(int phyAddress) = 0;
};

}  // namespace Valen::HAL
