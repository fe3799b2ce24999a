#include "Tools/boardsim/Models/Dp83867.h"

#include <algorithm>
#include <array>

namespace boardsim {
namespace {

constexpr unsigned kExtendedControl = 13;
constexpr unsigned kExtendedData = 14;
constexpr unsigned kPhyStatus = 17;
constexpr unsigned kResetControl = 31;

/// In the order of the data sheet's table of registers: value after power-on, bits that can be written.
constexpr std::array kAfterPowerOn{
    Phy::Register{0x00, 0x1140, 0x7D80},              // BMCR: autonegotiation, full duplex, 1000 Mbit/s
    Phy::Register{0x01, 0x7949, 0},                   // BMSR: 10 and 100 Mbit/s, extended status
    Phy::Register{0x02, 0x2000, 0},                   // PHYIDR1
    Phy::Register{0x03, 0xA231, 0},                   // PHYIDR2: model 0x23, revision 1
    Phy::Register{0x04, 0x01E1, 0xBFFF},              // ANAR
    Phy::Register{0x05, 0x0000, 0},                   // ALNPAR
    Phy::Register{0x06, 0x0064, 0},                   // ANER: next pages
    Phy::Register{0x07, 0x2001, 0xBFFF},              // ANNPTR
    Phy::Register{0x08, 0x2001, 0},                   // ANLNPTR
    Phy::Register{0x09, 0x0300, 0xFF00},              // CFG1: 1000BASE-T full and half duplex
    Phy::Register{0x0A, 0x0000, 0},                   // STS1
    Phy::Register{kExtendedControl, 0x0000, 0xC01F},  // REGCR
    Phy::Register{0x0F, 0x3000, 0},                   // 1KSCR: 1000BASE-T full and half duplex
    Phy::Register{0x10, 0x5848, 0xFFF7},              // PHYCR: SGMII by strap
    Phy::Register{kPhyStatus, 0x0000, 0},             // PHYSTS: see phyStatus()
    Phy::Register{0x12, 0x0000, 0xFFFF},              // MICR
    Phy::Register{0x13, 0x0000, 0},                   // ISR
    Phy::Register{0x14, 0x29C7, 0xFFFF},              // CFG2
    Phy::Register{0x15, 0x0000, 0},                   // RECR
    Phy::Register{0x16, 0x0000, 0xFFFF},              // BISCR
    Phy::Register{0x17, 0x0040, 0},                   // STS2
    Phy::Register{0x18, 0x6150, 0xFFFF},              // LEDCR1: what each LED shows
    Phy::Register{0x19, 0x4444, 0x7777},              // LEDCR2: polarity, forced values
    Phy::Register{0x1A, 0x0002, 0x0007},              // LEDCR3: blink rate
    Phy::Register{0x1E, 0x0002, 0xFFFF},              // CFG3
    Phy::Register{kResetControl, 0x0000, 0},          // CTRL: see writeResetControl()
};

struct ExtendedRegister {
    std::uint16_t address;
    std::uint16_t value;
    std::uint16_t writable;
};
constexpr std::array kExtendedAfterPowerOn{
    ExtendedRegister{0x0031, 0x10B0, 0x1FFF},  // CFG4
    ExtendedRegister{0x0032, 0x00D0, 0x00FF},  // RGMIICTL
    ExtendedRegister{0x0086, 0x0077, 0x00FF},  // RGMIIDCTL: delays of both clocks
    ExtendedRegister{0x00D3, 0x0000, 0x4000},  // SGMIICTL1: four wires
    ExtendedRegister{0x00FE, 0xE721, 0xFFFF},  // LOOPCR
    ExtendedRegister{0x016F, 0x0095, 0x0080},  // 10M_SGMII_CFG: bit 7 adapts the rate at 10 Mbit/s
    ExtendedRegister{0x0170, 0x0C10, 0x1F1F},  // IO_MUX_CFG
};

// PHYSTS
constexpr unsigned kSpeedShift = 14;
constexpr std::uint16_t kStatusFullDuplex = 0x2000;
constexpr std::uint16_t kStatusPageReceived = 0x1000;
constexpr std::uint16_t kStatusResolved = 0x0800;
constexpr std::uint16_t kStatusLinkUp = 0x0400;

// CTRL
constexpr std::uint16_t kSoftwareReset = 0x8000;
constexpr std::uint16_t kSoftwareRestart = 0x4000;

// REGCR: what a transfer through ADDAR is (IEEE 802.3, 22.2.4.3.11); the extended registers are device 31.
constexpr unsigned kFunctionShift = 14;
constexpr std::uint16_t kDeviceMask = 0x1F;
constexpr std::uint16_t kExtendedDevice = 0x1F;
enum Function : unsigned { kAddress = 0, kData = 1, kDataIncrement = 2, kWriteIncrement = 3 };

}  // namespace

Dp83867::Dp83867(ModelClock clock) : Phy(kAfterPowerOn, std::move(clock)) {
    Dp83867::resetRegisters();
}

void Dp83867::resetRegisters() {
    restoreAll();
    extendedAddress_ = 0;
    for (const ExtendedRegister& reg : kExtendedAfterPowerOn) {
        extended_[reg.address] = reg.value;
    }
}

std::uint16_t Dp83867::readOwn(unsigned reg) {
    switch (reg) {
        case kExtendedData:
            return readExtended();
        case kPhyStatus:
            return phyStatus();
        default:
            return stored(reg);
    }
}

void Dp83867::writeOwn(unsigned reg, std::uint16_t value) {
    if (reg == kExtendedData) {
        writeExtended(value);
    } else if (reg == kResetControl) {
        writeResetControl(value);
    } else {
        store(reg, value);
    }
}

std::uint16_t Dp83867::phyStatus() {
    const std::uint16_t page = takePageReceived() ? kStatusPageReceived : 0;
    const std::optional<Link> now = link();
    if (!now) {
        return page;
    }
    const auto speed = static_cast<unsigned>(now->speed) << kSpeedShift;
    return static_cast<std::uint16_t>(speed | page | kStatusResolved | kStatusLinkUp |
                                      (now->isFullDuplex ? kStatusFullDuplex : 0));
}

void Dp83867::writeResetControl(std::uint16_t value) {
    if (value & kSoftwareReset) {
        resetRegisters();
    }
    if (value & (kSoftwareReset | kSoftwareRestart)) {
        restartLink();
    }
}

std::uint16_t Dp83867::readExtended() {
    const unsigned function = stored(kExtendedControl) >> kFunctionShift;
    if ((stored(kExtendedControl) & kDeviceMask) != kExtendedDevice) {
        return 0;
    }
    if (function == kAddress) {
        return extendedAddress_;
    }
    const auto found = extended_.find(extendedAddress_);
    extendedAddress_ = static_cast<std::uint16_t>(extendedAddress_ + (function == kDataIncrement ? 1 : 0));
    return found == extended_.end() ? 0 : found->second;
}

void Dp83867::writeExtended(std::uint16_t value) {
    const unsigned function = stored(kExtendedControl) >> kFunctionShift;
    if ((stored(kExtendedControl) & kDeviceMask) != kExtendedDevice) {
        return;
    }
    if (function == kAddress) {
        extendedAddress_ = value;
        return;
    }
    const auto known =
        std::find_if(kExtendedAfterPowerOn.begin(), kExtendedAfterPowerOn.end(),
                     [&](const ExtendedRegister& reg) { return reg.address == extendedAddress_; });
    if (known != kExtendedAfterPowerOn.end()) {
        std::uint16_t& memory = extended_[extendedAddress_];
        memory = static_cast<std::uint16_t>((memory & ~known->writable) | (value & known->writable));
    }
    extendedAddress_ = static_cast<std::uint16_t>(extendedAddress_ + (function == kData ? 0 : 1));
}

}  // namespace boardsim
