#include "Tools/boardsim/Models/Lm75.h"

#include <algorithm>

namespace boardsim {
namespace {

constexpr std::size_t kTemperature = 0;
constexpr std::size_t kConfiguration = 1;

constexpr unsigned kOneShot = 0x80;  // reads as 0
constexpr unsigned kShutdown = 0x01;

constexpr unsigned kLowestBits = 9;
constexpr int kLowest = -2048;
constexpr int kHighest = 2047;

/// Bits 5 and 6 of the configuration: 9 to 12 bits of temperature.
unsigned temperatureBits(unsigned configuration) {
    return kLowestBits + (configuration >> 5 & 3);
}

std::size_t sizeOf(std::size_t number) {
    return number == kConfiguration ? 1 : 2;
}

}  // namespace

void Lm75::feel(int sixteenths) {
    felt_ = std::clamp(sixteenths, kLowest, kHighest);
    if ((registers_[kConfiguration] & kShutdown) == 0) {
        convert();
    }
}

bool Lm75::start(I2cDirection direction) {
    wantsPointer_ = direction == I2cDirection::Write;
    position_ = 0;
    return true;
}

bool Lm75::take(std::uint8_t byte) {
    if (!wantsPointer_) {
        return put(byte);
    }
    if (byte >= kRegisters) {
        return false;
    }
    pointer_ = byte;
    wantsPointer_ = false;
    return true;
}

std::uint8_t Lm75::give() {
    const std::size_t size = sizeOf(pointer_);
    const std::size_t shift = 8 * (size - 1 - position_);
    position_ = (position_ + 1) % size;
    return static_cast<std::uint8_t>(value(pointer_) >> shift);
}

void Lm75::losePower() {
    registers_ = afterPowerOn();
    pointer_ = 0;
    convert();
}

std::uint16_t Lm75::value(std::size_t number) const {
    if (number != kTemperature) {
        return registers_[number];
    }
    const unsigned unused = 16 - temperatureBits(registers_[kConfiguration]);
    return static_cast<std::uint16_t>(registers_[kTemperature] >> unused << unused);
}

/// Takes the next byte of a register; a byte too many has no place.
bool Lm75::put(std::uint8_t byte) {
    const std::size_t size = sizeOf(pointer_);
    if (pointer_ == kTemperature || position_ == size) {
        return false;
    }
    if (pointer_ == kConfiguration) {
        registers_[kConfiguration] = byte & ~kOneShot & 0xFF;
        if ((byte & kOneShot) != 0 || (byte & kShutdown) == 0) {
            convert();
        }
    } else {
        const unsigned shift = position_ == 0 ? 8 : 0;
        const unsigned kept = registers_[pointer_] & ~(0xFFU << shift);
        registers_[pointer_] = static_cast<std::uint16_t>(kept | static_cast<unsigned>(byte) << shift);
    }
    ++position_;
    return true;
}

void Lm75::convert() {
    registers_[kTemperature] = static_cast<std::uint16_t>(static_cast<unsigned>(felt_) << 4);
}

}  // namespace boardsim
