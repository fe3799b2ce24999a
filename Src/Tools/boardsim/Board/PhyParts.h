#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Tools/boardsim/Models/Phy.h"

namespace boardsim {

enum class PhyModel : std::uint8_t { Dp83867, Phy88e1510 };

/// A PHY on the board's MDIO bus.
struct MdioPhy {
    unsigned address = 0;  ///< 0-31
    PhyModel model = PhyModel::Dp83867;

    bool operator==(const MdioPhy&) const = default;
};

/// A network interface of the processor and the PHY on its own MDIO bus.
struct MiiPart {
    std::string interface;  ///< "eth0"
    MdioPhy phy{};
    bool hasCarrier = true;

    bool operator==(const MiiPart&) const = default;
};

std::unique_ptr<Phy> makePhy(PhyModel model, const ModelClock& clock);

}  // namespace boardsim
