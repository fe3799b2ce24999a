#include "Tools/boardsim/Models/TripleSpeedMac.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace boardsim {
namespace {

enum class Change : std::uint8_t { Never, Always, WhenOff };

struct Register {
    std::uint32_t offset;
    std::string_view name;
    std::uint32_t reset;
    std::uint32_t writable;
    Change change;
};

constexpr std::uint32_t kCommand = 0x08;
constexpr std::uint32_t kTransmit = 1U << 0;
constexpr std::uint32_t kReceive = 1U << 1;
constexpr std::uint32_t kSoftwareReset = 1U << 13;

/// In the order of the user guide's tables; offsets in bytes, four times the guide's.
constexpr std::array kRegisters{
    // Base configuration registers.
    Register{0x00, "rev", 0x00001200, 0, Change::Never},
    Register{0x04, "scratch", 0, 0xFFFFFFFF, Change::Always},
    Register{kCommand, "command_config", 0, 0x07DFC7FF, Change::Always},
    Register{0x0C, "mac_0", 0, 0xFFFFFFFF, Change::WhenOff},
    Register{0x10, "mac_1", 0, 0x0000FFFF, Change::WhenOff},
    Register{0x14, "frm_length", 1518, 0x0000FFFF, Change::WhenOff},
    Register{0x18, "pause_quant", 0, 0x0000FFFF, Change::Always},
    Register{0x1C, "rx_section_empty", 0, 0x0000FFFF, Change::WhenOff},
    Register{0x20, "rx_section_full", 0, 0x0000FFFF, Change::WhenOff},
    Register{0x24, "tx_section_empty", 0, 0x0000FFFF, Change::WhenOff},
    Register{0x28, "tx_section_full", 0, 0x0000FFFF, Change::WhenOff},
    Register{0x2C, "rx_almost_empty", 0, 0x0000FFFF, Change::WhenOff},
    Register{0x30, "rx_almost_full", 0, 0x0000FFFF, Change::WhenOff},
    Register{0x34, "tx_almost_empty", 0, 0x0000FFFF, Change::WhenOff},
    Register{0x38, "tx_almost_full", 0, 0x0000FFFF, Change::WhenOff},
    Register{0x3C, "mdio_addr0", 0, 0x0000001F, Change::Always},
    Register{0x40, "mdio_addr1", 1, 0x0000001F, Change::Always},
    Register{0x44, "holdoff_quant", 0xFFFF, 0x0000FFFF, Change::Always},
    Register{0x5C, "tx_ipg_length", 0, 0x0000001F, Change::WhenOff},
    // Transmit and receive command registers.
    Register{0xE8, "tx_cmd_stat", 0, 0x00060000, Change::Always},
    Register{0xEC, "rx_cmd_stat", 0, 0x02000000, Change::Always},
    // PCS configuration registers.
    Register{0x200, "control", 0x1140, 0x4D40, Change::Always},
    Register{0x204, "status", 0x0009, 0, Change::Never},
    Register{0x208, "phy_identifier", 0, 0, Change::Never},
    Register{0x20C, "phy_identifier", 0, 0, Change::Never},
    Register{0x210, "dev_ability", 0x01A0, 0xFFFF, Change::Always},
    Register{0x214, "partner_ability", 0, 0, Change::Never},
    Register{0x218, "an_expansion", 0, 0, Change::Never},
    Register{0x240, "scratch", 0, 0xFFFF, Change::Always},
    Register{0x244, "rev", 0x1200, 0, Change::Never},
    Register{0x248, "link_timer", 0x12D0, 0xFFFF, Change::Always},
    Register{0x24C, "link_timer", 0x0013, 0x001F, Change::Always},
    Register{0x250, "if_mode", 0, 0x001F, Change::Always},
};

/// Counters from 0x60 to the transmit command register, all zero: no frame has passed.
constexpr std::uint32_t kFirstCounter = 0x60;
constexpr std::uint32_t kBehindCounters = 0xE8;

const Register* registerAt(std::uint32_t offset) {
    const auto found = std::find_if(kRegisters.begin(), kRegisters.end(),
                                    [&](const Register& reg) { return reg.offset == offset; });
    return found == kRegisters.end() ? nullptr : &*found;
}

}  // namespace

TripleSpeedMac::TripleSpeedMac(ModelClock clock) : clock_(std::move(clock)) {
    for (const Register& reg : kRegisters) {
        values_[reg.offset] = reg.reset;
    }
}

RegisterValue TripleSpeedMac::read(std::uint32_t offset, unsigned width) {
    if (Refusal refused = refuseUnlessWord(offset, width)) {
        return {0, std::move(refused)};
    }
    const auto found = values_.find(offset);
    if (found == values_.end()) {
        const bool isCounter = offset >= kFirstCounter && offset < kBehindCounters;
        return {0, isCounter ? Refusal() : Refusal("no register to read")};
    }
    return {found->second | (offset == kCommand && isResetting() ? kSoftwareReset : 0)};
}

Refusal TripleSpeedMac::write(std::uint32_t offset, unsigned width, std::uint64_t value) {
    if (Refusal refused = refuseUnlessWord(offset, width)) {
        return refused;
    }
    const Register* reg = registerAt(offset);
    if (!reg || reg->change == Change::Never) {
        return "no register to write";
    }
    if (reg->change == Change::WhenOff && isRunning()) {
        return std::string(reg->name) + " is for a MAC that is off";
    }
    const auto word = static_cast<std::uint32_t>(value);
    values_[offset] = word & reg->writable;
    if (offset == kCommand) {
        writeCommand(word);
    }
    return std::nullopt;
}

void TripleSpeedMac::writeCommand(std::uint32_t value) {
    if (isResetting() || (value & kSoftwareReset)) {
        values_[kCommand] &= ~(kTransmit | kReceive);
    }
    if (value & kSoftwareReset) {
        resetEnd_ = clock_() + kResetTime;
        isHanging_ = hang_ && hang_->strikes();
    }
}

bool TripleSpeedMac::isResetting() const {
    return isHanging_ || clock_() < resetEnd_;
}

bool TripleSpeedMac::isRunning() const {
    return (values_.at(kCommand) & (kTransmit | kReceive)) != 0;
}

}  // namespace boardsim
