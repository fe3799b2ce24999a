#pragma once

#include <map>

#include "Tools/boardsim/Models/Phy.h"

namespace boardsim {

/// The DP83867IS: registers 0-31 and, behind registers 13 and 14, extended registers.
/// Source: DP83867IS data sheet (SNLS504), section "Register Maps"; indirect access: IEEE 802.3 annex 22D.
/// Strapped for SGMII, autonegotiation on, all speeds.
class Dp83867 final : public Phy {
public:
    explicit Dp83867(ModelClock clock);

private:
    std::uint16_t readOwn(unsigned reg) override;
    void writeOwn(unsigned reg, std::uint16_t value) override;
    void resetRegisters() override;

    std::uint16_t phyStatus();
    void writeResetControl(std::uint16_t value);
    std::uint16_t readExtended();
    void writeExtended(std::uint16_t value);

    std::map<std::uint16_t, std::uint16_t> extended_;  ///< address to value, those that are known
    std::uint16_t extendedAddress_ = 0;
};

}  // namespace boardsim
