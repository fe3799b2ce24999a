#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Tools/boardinfo/Report.h"

namespace Valen::HAL {
class GenericEthernetPhy;
class MDIO;
}  // namespace Valen::HAL

namespace boardinfo::sections {

/// What a PHY's address on a bus answers.
enum class PhyPresence : std::uint8_t {
    Answers,
    Nobody,    ///< the bus works, but nobody is at that address
    BusFails,  ///< the bus did not do the transfer
};
PhyPresence presenceOf(Valen::HAL::MDIO& mdio);

/// The speed of a PHY that answers, with its link and its identifier. The driver is given the accessor, with
/// which it cannot write.
Row phyRow(std::string name, Valen::HAL::GenericEthernetPhy& driver,
           const std::shared_ptr<Valen::HAL::MDIO>& mdio);

}  // namespace boardinfo::sections
