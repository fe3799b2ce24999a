#include "Tools/boardsim/Models/Phy.h"

#include <utility>

namespace boardsim {
namespace {

// Registers and bits: IEEE 802.3, 22.2.4 and 40.5.1.1.
constexpr unsigned kControl = 0;
constexpr std::uint16_t kReset = 0x8000;
constexpr std::uint16_t kSpeedLow = 0x2000;
constexpr std::uint16_t kNegotiate = 0x1000;
constexpr std::uint16_t kPowerDown = 0x0800;
constexpr std::uint16_t kRestart = 0x0200;
constexpr std::uint16_t kFullDuplex = 0x0100;
constexpr std::uint16_t kSpeedHigh = 0x0040;

constexpr unsigned kStatus = 1;
constexpr std::uint16_t kNegotiated = 0x0020;
constexpr std::uint16_t kLinkUp = 0x0004;

constexpr unsigned kAdvertisement = 4;
constexpr unsigned kPartner = 5;
constexpr unsigned kExpansion = 6;
constexpr std::uint16_t kPageReceived = 0x0002;
constexpr std::uint16_t kPartnerNegotiates = 0x0001;
constexpr unsigned kGigabitControl = 9;
constexpr unsigned kGigabitStatus = 10;
constexpr unsigned kFirstOwn = 11;
constexpr unsigned kExtendedStatus = 15;

constexpr std::uint16_t kPartnerPage = 0xC1E1;     // next page, acknowledge, 10 and 100 Mbit/s, IEEE 802.3
constexpr std::uint16_t kPartnerGigabit = 0x3800;  // both receivers fine, 1000BASE-T full duplex

/// The ways to a link in the order of priority (28B.3), as both sides advertise them.
struct Technology {
    unsigned reg;
    std::uint16_t own;
    std::uint16_t partner;
    Phy::Link link;
};
constexpr std::array kTechnologies{
    Technology{kGigabitControl, 0x0200, 0x0800, {Phy::Speed::Mbit1000, true}},
    Technology{kAdvertisement, 0x0100, 0x0100, {Phy::Speed::Mbit100, true}},
    Technology{kAdvertisement, 0x0080, 0x0080, {Phy::Speed::Mbit100, false}},
    Technology{kAdvertisement, 0x0040, 0x0040, {Phy::Speed::Mbit10, true}},
    Technology{kAdvertisement, 0x0020, 0x0020, {Phy::Speed::Mbit10, false}},
};

}  // namespace

Phy::Phy(std::span<const Register> registers, ModelClock clock)
    : registers_(registers), clock_(std::move(clock)) {
    for (const Register& reg : registers_) {
        writable_[reg.number] = reg.writable;
    }
    Phy::restoreAll();
    Phy::restartLink();
}

std::uint16_t Phy::read(unsigned reg) {
    switch (reg) {
        case kControl:
            return control();
        case kStatus:
            return status();
        case kPartner:
            return partnerAbility();
        case kExpansion:
            return expansion();
        case kGigabitStatus:
            return gigabitStatus();
        default:
            return reg < kFirstOwn || reg == kExtendedStatus ? stored(reg) : readOwn(reg);
    }
}

void Phy::write(unsigned reg, std::uint16_t value) {
    if (isResetting()) {
        return;  // 22.2.4.1.1: a PHY need not take a write before its reset is done
    }
    if (reg == kControl) {
        writeControl(value);
    } else if (reg < kFirstOwn || reg == kExtendedStatus) {
        store(reg, value);
    } else {
        writeOwn(reg, value);
    }
}

void Phy::loseLink(const FaultSchedule& when) {
    loss_ = when;
    restartLink();
}

void Phy::store(unsigned reg, std::uint16_t value) {
    const std::uint16_t mask = writable_[reg];
    values_[reg] = static_cast<std::uint16_t>((values_[reg] & ~mask) | (value & mask));
}

void Phy::restoreAll() {
    for (const Register& reg : registers_) {
        values_[reg.number] = reg.value;
    }
}

void Phy::restartLink() {
    linkUp_ = clock_() + kNegotiationTime;
    advertised_ = stored(kAdvertisement);
    advertisedGigabit_ = stored(kGigabitControl);
    hasPartner_ = !loss_ || !loss_->strikes();
    linkWasDown_ = true;
    pageWasTaken_ = false;
    pageWasShown_ = false;
}

std::uint16_t Phy::control() const {
    return static_cast<std::uint16_t>(stored(kControl) | (isResetting() ? kReset : 0));
}

void Phy::writeControl(std::uint16_t value) {
    constexpr std::uint16_t kLinkBits = kSpeedLow | kNegotiate | kPowerDown | kFullDuplex | kSpeedHigh;
    const std::uint16_t before = stored(kControl);
    store(kControl, value);
    if (value & kReset) {
        resetRegisters();
        resetEnd_ = clock_() + kResetTime;
    }
    const bool isRestarted = (value & kRestart) && (stored(kControl) & kNegotiate);
    if ((value & kReset) || isRestarted || ((before ^ stored(kControl)) & kLinkBits)) {
        restartLink();
    }
}

std::uint16_t Phy::status() {
    const bool isUp = link().has_value();
    const bool shownUp = isUp && !std::exchange(linkWasDown_, !isUp);
    return static_cast<std::uint16_t>(stored(kStatus) | (hasNegotiated() ? kNegotiated : 0) |
                                      (shownUp ? kLinkUp : 0));
}

std::uint16_t Phy::partnerAbility() const {
    return hasNegotiated() ? kPartnerPage : stored(kPartner);
}

std::uint16_t Phy::expansion() {
    if (!hasNegotiated()) {
        return stored(kExpansion);
    }
    const bool isNew = !std::exchange(pageWasShown_, true);
    return static_cast<std::uint16_t>(stored(kExpansion) | kPartnerNegotiates | (isNew ? kPageReceived : 0));
}

std::uint16_t Phy::gigabitStatus() const {
    return hasNegotiated() ? kPartnerGigabit : stored(kGigabitStatus);
}

bool Phy::takePageReceived() {
    return hasNegotiated() && !std::exchange(pageWasTaken_, true);
}

bool Phy::hasNegotiated() const {
    const bool canNegotiate =
        hasPartner_ && (stored(kControl) & kNegotiate) && !(stored(kControl) & kPowerDown);
    return canNegotiate && clock_() >= linkUp_ && negotiated();
}

std::optional<Phy::Link> Phy::link() const {
    if (!hasPartner_ || (stored(kControl) & kPowerDown) || clock_() < linkUp_) {
        return std::nullopt;
    }
    return stored(kControl) & kNegotiate ? negotiated() : forced();
}

std::optional<Phy::Link> Phy::negotiated() const {
    for (const Technology& technology : kTechnologies) {
        const bool isGigabit = technology.reg == kGigabitControl;
        const std::uint16_t own = isGigabit ? advertisedGigabit_ : advertised_;
        const std::uint16_t partner = isGigabit ? kPartnerGigabit : kPartnerPage;
        if ((own & technology.own) && (partner & technology.partner)) {
            return technology.link;
        }
    }
    return std::nullopt;
}

std::optional<Phy::Link> Phy::forced() const {
    const std::uint16_t control = stored(kControl);
    if (control & kSpeedHigh) {
        return std::nullopt;  // 40.5.1: 1000BASE-T always negotiates
    }
    const Speed speed = control & kSpeedLow ? Speed::Mbit100 : Speed::Mbit10;
    return Link{speed, (control & kFullDuplex) != 0};
}

}  // namespace boardsim
