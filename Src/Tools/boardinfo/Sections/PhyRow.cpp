#include "Tools/boardinfo/Sections/PhyRow.h"

#include <cstdint>
#include <utility>

#include "Tools/boardinfo/Sections/ReadOnlyMdio.h"
#include "Tools/boardinfo/ValueText.h"
#include "Vl/HAL/Chips/GenericEthernetPhy.h"

namespace boardinfo::sections {
namespace {

using Valen::HAL::GenericEthernetPhy;
using Valen::HAL::MDIO;

/// IEEE 802.3, clause 22.2.4: the link bit stays 0 after a loss of the link until it is read.
constexpr int kStatus = 1;
constexpr int kLinkUp = 0x0004;
constexpr int kIdentifier = 2;
/// The bus is pulled up: so reads what nobody drives.
constexpr int kNobody = 0xFFFF;

bool isLinkUp(MDIO& mdio) {
    mdio.getReg(kStatus);  // how it was
    const int now = mdio.getReg(kStatus);
    return now != MDIO::kFailed && (now & kLinkUp) != 0;
}

Value speedOf(GenericEthernetPhy& driver) {
    switch (driver.getLinkSpeed()) {
        case GenericEthernetPhy::Mbit10:
            return std::int64_t{10};
        case GenericEthernetPhy::Mbit100:
            return std::int64_t{100};
        case GenericEthernetPhy::Mbit1000:
            return std::int64_t{1000};
        default:
            return std::int64_t{0};
    }
}

}  // namespace

PhyPresence presenceOf(MDIO& mdio) {
    switch (mdio.getReg(kIdentifier)) {
        case MDIO::kFailed:
            return PhyPresence::BusFails;
        case kNobody:
            return PhyPresence::Nobody;
        default:
            return PhyPresence::Answers;
    }
}

Row phyRow(std::string name, GenericEthernetPhy& driver, const std::shared_ptr<MDIO>& mdio) {
    driver.setMDIO(std::make_shared<ReadOnlyMdio>(mdio));
    const int high = driver.getPhyId1();
    const int low = driver.getPhyId2();
    if (high == MDIO::kFailed || low == MDIO::kFailed) {
        return failed(std::move(name));
    }
    const auto id = static_cast<std::uint32_t>(high) << 16 | static_cast<std::uint32_t>(low);
    return answered(std::move(name), speedOf(driver), "Mbit/s")
        .with("link", std::string(isLinkUp(*mdio) ? "up" : "down"))
        .with("id", hexText(id, 8));
}

}  // namespace boardinfo::sections
