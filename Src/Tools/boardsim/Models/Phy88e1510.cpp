#include "Tools/boardsim/Models/Phy88e1510.h"

#include <algorithm>
#include <array>

namespace boardsim {
namespace {

constexpr unsigned kControl = 0;
constexpr unsigned kCopperStatus = 17;
constexpr unsigned kPage = 22;

/// Page 0: value after a hardware reset, bits that can be written.
constexpr std::array kAfterPowerOn{
    Phy::Register{0, 0x1140, 0x7D40},         // copper control: autonegotiation, full duplex, 1000 Mbit/s
    Phy::Register{1, 0x7949, 0},              // copper status: 10 and 100 Mbit/s, extended status
    Phy::Register{2, 0x0141, 0},              // PHY identifier 1
    Phy::Register{3, 0x0DD1, 0},              // PHY identifier 2: model 0x1D, revision 1
    Phy::Register{4, 0x01E1, 0xBFE0},         // copper autonegotiation advertisement, IEEE 802.3
    Phy::Register{5, 0x0000, 0},              // link partner ability
    Phy::Register{6, 0x0004, 0},              // autonegotiation expansion: next pages
    Phy::Register{7, 0x2001, 0xBFFF},         // next page transmit
    Phy::Register{8, 0x0000, 0},              // link partner next page
    Phy::Register{9, 0x0300, 0xFF00},         // 1000BASE-T control: full and half duplex
    Phy::Register{10, 0x0000, 0},             // 1000BASE-T status
    Phy::Register{15, 0x3000, 0},             // extended status: 1000BASE-T full and half duplex
    Phy::Register{16, 0x3060, 0xFFFF},        // copper specific control 1: crossover, downshift counter
    Phy::Register{kCopperStatus, 0x0000, 0},  // copper specific status 1: see copperStatus()
    Phy::Register{18, 0x0000, 0xFFFF},        // copper interrupt enable
    Phy::Register{19, 0x0000, 0},             // copper interrupt status
    Phy::Register{20, 0x0000, 0xFFFF},        // copper specific control 2
    Phy::Register{21, 0x0000, 0},             // receive errors
    Phy::Register{kPage, 0x0000, 0x00FF},     // page
};

struct PagedRegister {
    std::pair<unsigned, unsigned> place;
    std::uint16_t value;
    std::uint16_t writable;
};
constexpr std::array kFurtherPages{
    PagedRegister{{2, 16}, 0x0448, 0xFFFF},  // MAC specific control 1
    PagedRegister{{2, 21}, 0x1046, 0xFFFF},  // MAC specific control 2
    PagedRegister{{3, 16}, 0x177E, 0xFFFF},  // LED[2:0] function
    PagedRegister{{3, 17}, 0x8800, 0xFFFF},  // LED[2:0] polarity
    PagedRegister{{3, 18}, 0x4905, 0xFFFF},  // LED timer: stretching, blink rate, interrupt polarity
};

// Copper specific status register 1.
constexpr unsigned kSpeedShift = 14;
constexpr std::uint16_t kStatusFullDuplex = 0x2000;
constexpr std::uint16_t kStatusPageReceived = 0x1000;
constexpr std::uint16_t kStatusResolved = 0x0800;
constexpr std::uint16_t kStatusLinkUp = 0x0400;

/// Loopback, power-down and isolation end with a software reset; what the link is to be stays.
constexpr std::uint16_t kControlKept = 0x3140;

}  // namespace

Phy88e1510::Phy88e1510(ModelClock clock) : Phy(kAfterPowerOn, std::move(clock)) {
    for (const PagedRegister& reg : kFurtherPages) {
        furtherPages_[reg.place] = reg.value;
    }
}

bool Phy88e1510::isOnFurtherPage(unsigned reg) const {
    return reg != kPage && stored(kPage) != 0;
}

std::uint16_t Phy88e1510::read(unsigned reg) {
    if (!isOnFurtherPage(reg)) {
        return Phy::read(reg);
    }
    const auto found = furtherPages_.find({stored(kPage), reg});
    return found == furtherPages_.end() ? 0 : found->second;
}

void Phy88e1510::write(unsigned reg, std::uint16_t value) {
    if (!isOnFurtherPage(reg)) {
        Phy::write(reg, value);
        return;
    }
    const Place place{stored(kPage), reg};
    const auto known = std::find_if(kFurtherPages.begin(), kFurtherPages.end(),
                                    [&](const PagedRegister& paged) { return paged.place == place; });
    if (known != kFurtherPages.end()) {
        std::uint16_t& memory = furtherPages_[place];
        memory = static_cast<std::uint16_t>((memory & ~known->writable) | (value & known->writable));
    }
}

std::uint16_t Phy88e1510::readOwn(unsigned reg) {
    return reg == kCopperStatus ? copperStatus() : stored(reg);
}

void Phy88e1510::resetRegisters() {
    store(kControl, stored(kControl) & kControlKept);
}

std::uint16_t Phy88e1510::copperStatus() {
    const std::uint16_t page = takePageReceived() ? kStatusPageReceived : 0;
    const std::optional<Link> now = link();
    if (!now) {
        return page;
    }
    const auto speed = static_cast<unsigned>(now->speed) << kSpeedShift;
    return static_cast<std::uint16_t>(speed | page | kStatusResolved | kStatusLinkUp |
                                      (now->isFullDuplex ? kStatusFullDuplex : 0));
}

}  // namespace boardsim
