#include "Tools/boardsim/Models/Sx1509.h"

namespace boardsim {
namespace {

// Register pairs (section 5), by the number of port B.
constexpr std::uint8_t kInputDisable = 0x00;
constexpr std::uint8_t kOpenDrain = 0x0A;
constexpr std::uint8_t kPolarity = 0x0C;
constexpr std::uint8_t kDir = 0x0E;
constexpr std::uint8_t kData = 0x10;
constexpr std::uint8_t kInterruptMask = 0x12;
constexpr std::uint8_t kEventStatus = 0x1A;

// Single registers.
constexpr std::uint8_t kSenseHighB = 0x14;  // pins 15 to 12, two bits each; then 11 to 8, 7 to 4, 3 to 0
constexpr std::uint8_t kSenseLowA = 0x17;
constexpr std::uint8_t kMisc = 0x1F;
constexpr std::uint8_t kKeyData1 = 0x27;
constexpr std::uint8_t kKeyData2 = 0x28;
constexpr std::uint8_t kHighInputA = 0x6A;
constexpr std::uint8_t kReset = 0x7D;

constexpr unsigned kMiscFixedNumber = 0x02;     // RegMisc bit 1: the register number does not advance
constexpr unsigned kMiscKeepsInterrupt = 0x01;  // RegMisc bit 0: reading data does not clear the interrupt

constexpr std::uint8_t kResetFirst = 0x12;  // section 4.3.2
constexpr std::uint8_t kResetSecond = 0x34;

/// Registers that are not 0 after power-on: section 5, column "Default".
struct ResetValue {
    std::uint8_t first;
    std::uint8_t last;
    std::uint8_t value;
};
constexpr ResetValue kResetValues[] = {
    {0x0E, 0x0F, 0xFF},  // RegDir: inputs
    {0x10, 0x11, 0xFF},  // RegData
    {0x12, 0x13, 0xFF},  // RegInterruptMask: no interrupts
    {0x27, 0x28, 0xFF},  // RegKeyData: no key
    {0x2A, 0x2A, 0xFF},  // RegIOn0: full intensity, and so for each pin
    {0x2D, 0x2D, 0xFF}, {0x30, 0x30, 0xFF}, {0x33, 0x33, 0xFF}, {0x36, 0x36, 0xFF}, {0x3B, 0x3B, 0xFF},
    {0x40, 0x40, 0xFF}, {0x45, 0x45, 0xFF}, {0x4A, 0x4A, 0xFF}, {0x4D, 0x4D, 0xFF}, {0x50, 0x50, 0xFF},
    {0x53, 0x53, 0xFF}, {0x56, 0x56, 0xFF}, {0x5B, 0x5B, 0xFF}, {0x60, 0x60, 0xFF}, {0x65, 0x65, 0xFF},
};

/// Behind the last of the listed registers there is only RegReset; 0x7E and 0x7F are for tests.
bool isWritable(std::uint8_t number) {
    const bool isListed = number <= kHighInputA || number == kReset;
    return isListed && number != kKeyData1 && number != kKeyData2;
}

/// Whether `number` is one of the two registers of a pair.
bool isIn(std::uint8_t pair, std::uint8_t number) {
    return (number & ~1U) == pair;
}

std::uint16_t inPort(std::uint8_t number, std::uint8_t bits) {
    return static_cast<std::uint16_t>((number & 1) == 0 ? bits << 8 : bits);
}

}  // namespace

Sx1509::Sx1509() {
    reset();
}

void Sx1509::drive(std::uint16_t levels) {
    driven_ = levels;
    noticeEdges();
}

std::uint16_t Sx1509::pins() const {
    const unsigned wanted = word(kData) ^ word(kPolarity);
    const unsigned floating = word(kDir) | (word(kOpenDrain) & wanted);
    return static_cast<std::uint16_t>((wanted & ~floating) | (driven_ & floating));
}

void Sx1509::losePower() {
    RegisterChip::losePower();
    reset();
}

bool Sx1509::writeRegister(std::uint8_t number, std::uint8_t value) {
    if (!isWritable(number)) {
        return false;
    }
    const bool completesReset = number == kReset && resetBegun_ && value == kResetSecond;
    resetBegun_ = number == kReset && value == kResetFirst;
    if (completesReset) {
        reset();
    } else if (number != kReset) {
        store(number, value);
    }
    return true;
}

std::uint8_t Sx1509::readRegister(std::uint8_t number) {
    if (number >= kRegisters) {
        return 0;
    }
    return isIn(kData, number) ? readData(number) : registers_[number];
}

std::uint8_t Sx1509::following(std::uint8_t number) const {
    if ((registers_[kMisc] & kMiscFixedNumber) != 0) {
        return number;
    }
    return static_cast<std::uint8_t>((number + 1) % kRegisters);
}

void Sx1509::reset() {
    registers_.fill(0);
    for (const auto& [first, last, value] : kResetValues) {
        for (unsigned number = first; number <= last; ++number) {
            registers_[number] = value;
        }
    }
    seen_ = pins();
    resetBegun_ = false;
}

void Sx1509::store(std::uint8_t number, std::uint8_t value) {
    if (isIn(kInterruptSource, number) || isIn(kEventStatus, number)) {
        // A one clears the event and the interrupt that it caused.
        clearEvents(inPort(number, value));
        return;
    }
    const std::uint8_t before = registers_[number];
    registers_[number] = value;
    if (number >= kSenseHighB && number <= kSenseLowA) {
        const unsigned firstPin = 4U * (kSenseLowA - number);
        for (unsigned i = 0; i < 4; ++i) {
            const bool changed = ((before ^ value) >> 2 * i & 3) != 0;
            clearEvents(static_cast<std::uint16_t>(unsigned{changed} << (firstPin + i)));
        }
    }
    noticeEdges();
}

std::uint16_t Sx1509::word(std::uint8_t pair) const {
    return static_cast<std::uint16_t>(registers_[pair] << 8 | registers_[pair + 1U]);
}

void Sx1509::setWord(std::uint8_t pair, std::uint16_t value) {
    registers_[pair] = static_cast<std::uint8_t>(value >> 8);
    registers_[pair + 1U] = static_cast<std::uint8_t>(value);
}

void Sx1509::clearEvents(std::uint16_t pins) {
    setWord(kEventStatus, static_cast<std::uint16_t>(word(kEventStatus) & ~pins));
    setWord(kInterruptSource, static_cast<std::uint16_t>(word(kInterruptSource) & ~pins));
}

/// An edge is an event on pins whose sense register asks for its kind, and an interrupt where not masked.
void Sx1509::noticeEdges() {
    const std::uint16_t now = pins();
    const unsigned changed = (now ^ seen_) & ~unsigned{word(kInputDisable)};
    seen_ = now;
    unsigned events = 0;
    for (unsigned pin = 0; pin < 16; ++pin) {
        const unsigned sense = registers_[kSenseLowA - pin / 4] >> 2 * (pin % 4);
        const unsigned kind = (now >> pin & 1) != 0 ? 1 : 2;  // rising, falling
        events |= unsigned{(changed >> pin & 1) != 0 && (sense & kind) != 0} << pin;
    }
    setWord(kEventStatus, static_cast<std::uint16_t>(word(kEventStatus) | events));
    setWord(kInterruptSource,
            static_cast<std::uint16_t>(word(kInterruptSource) | (events & ~unsigned{word(kInterruptMask)})));
}

/// What the pins of a port are, whatever their direction; a disabled input buffer sees nothing.
std::uint8_t Sx1509::readData(std::uint8_t number) {
    const unsigned visible = (pins() ^ word(kPolarity)) & ~unsigned{word(kInputDisable)};
    if ((registers_[kMisc] & kMiscKeepsInterrupt) == 0) {
        const std::uint16_t port = inPort(number, 0xFF);
        setWord(kInterruptSource, static_cast<std::uint16_t>(word(kInterruptSource) & ~port));
    }
    return static_cast<std::uint8_t>((number & 1) == 0 ? visible >> 8 : visible);
}

}  // namespace boardsim
