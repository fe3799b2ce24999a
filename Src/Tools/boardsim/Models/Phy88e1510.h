#pragma once

#include <map>
#include <utility>

#include "Tools/boardsim/Models/Phy.h"

namespace boardsim {

/// The 88E1510 with its copper interface: register 22 selects the page that all other registers belong to.
/// Pages 0 (copper), 2 (MAC interface) and 3 (LEDs) have registers here; others read 0. A software reset
/// keeps what is advertised, what the LEDs show and the page, as the data sheet's "SW Rst" columns say.
/// Source: 88E1510 data sheet, section "Register Description".
class Phy88e1510 final : public Phy {
public:
    explicit Phy88e1510(ModelClock clock);

    std::uint16_t read(unsigned reg) override;
    void write(unsigned reg, std::uint16_t value) override;

private:
    std::uint16_t readOwn(unsigned reg) override;
    void resetRegisters() override;

    bool isOnFurtherPage(unsigned reg) const;
    std::uint16_t copperStatus();

    using Place = std::pair<unsigned, unsigned>;   ///< page and register
    std::map<Place, std::uint16_t> furtherPages_;  ///< registers of the pages behind page 0
};

}  // namespace boardsim
