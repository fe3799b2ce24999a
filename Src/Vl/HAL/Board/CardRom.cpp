#include "Vl/HAL/Board/CardRom.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace Valen {
namespace {

template <typename Record>
Record recordAt(const CardRom::Image& image, long offset) {
    static_assert(std::is_trivially_copyable_v<Record>);
    Record record;
    std::memcpy(&record, image.data() + offset, sizeof record);
    return record;
}

}  // namespace

static_assert(CardRom::macOffset(BinaryData::SecondMac) + long{sizeof(MACAddress)} ==
              CardRom::kVersionOffset);
static_assert(CardRom::kVersionOffset + long{sizeof(Version)} == CardRom::kSerialOffset);
static_assert(CardRom::kSerialOffset + long{sizeof(HaldenSerial)} == CardRom::kSize);

CardRom CardRom::parse(const Image& image) {
    CardRom rom;
    rom.macs = recordAt<decltype(rom.macs)>(image, kMacOffset);
    rom.version = withoutRevision(recordAt<Version>(image, kVersionOffset));
    rom.serial = recordAt<HaldenSerial>(image, kSerialOffset);
    return rom;
}

std::optional<std::string> CardRom::fault() const {
    const MACAddress& mac = macs[BinaryData::FirstMac];
    if (!std::equal(kMakerOui.begin(), kMakerOui.end(), mac.bytes().begin())) {
        return std::string("invalid MAC: ") + mac.toString().c_str();
    }
    if (version.cardType() != kCardType) {
        return std::string("invalid version: ") + version.toString().c_str();
    }
    if (!serial.IsValid()) {
        return std::string("invalid serial: ") + serial.toString().c_str();
    }
    return std::nullopt;
}

Version withoutRevision(Version version) {
    if (!version.hasFurtherNumbers()) {
        version.words[2] = 0;
    }
    return version;
}

}  // namespace Valen
