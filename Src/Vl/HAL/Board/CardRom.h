#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "Vl/Common/Identity/HaldenSerial.h"
#include "Vl/Common/Identity/MACAddress.h"
#include "Vl/Common/Identity/Version.h"
#include "Vl/HAL/Board/MACAddressType.h"

namespace Valen {

/// What a card's identity ROM says. A plain value. The ROM holds, as far as it matters here:
///
///     0    16      (something else)
///     16   2 x 6   MAC addresses, in transmission order
///     28   12      the card's Version
///     40   16      the card's HaldenSerial
struct CardRom {
    static constexpr long kMacOffset = 16;
    static constexpr long kVersionOffset = 28;
    static constexpr long kSerialOffset = 40;
    static constexpr long kSize = 56;
    using Image = std::array<std::byte, kSize>;

    /// How the addresses of this maker's cards begin: locally administered, as nobody else's do.
    static constexpr std::array<unsigned char, 3> kMakerOui = {0x02, 0x00, 0x5E};
    /// The card type of a processing card.
    static constexpr unsigned int kCardType = 0x80;

    std::array<MACAddress, 2> macs;
    Version version;
    HaldenSerial serial;

    /// Takes an image apart; any bytes will do.
    static CardRom parse(const Image& image);

    static constexpr long macOffset(BinaryData::MACAddressType type) {
        return kMacOffset + static_cast<long>(MACAddress::kSize) * type;
    }

    /// What keeps this from being a card's identity, in words; nothing when it is one: the first address
    /// begins with the maker's OUI, the card type is right and the serial is valid.
    std::optional<std::string> fault() const;
};

/// A version as the hardware tells it: without what its word 2 holds unless it is two further numbers.
Version withoutRevision(Version version);

}  // namespace Valen
