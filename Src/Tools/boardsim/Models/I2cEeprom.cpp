#include "Tools/boardsim/Models/I2cEeprom.h"

#include <algorithm>

namespace boardsim {

I2cEeprom::I2cEeprom(EepromGeometry geometry, ModelClock now)
    : geometry_(geometry), now_(std::move(now)), memory_(geometry.bytes, 0xFF) {}

void I2cEeprom::fill(std::string_view contents) {
    const std::size_t count = std::min(contents.size(), memory_.size());
    std::transform(contents.begin(), contents.begin() + static_cast<std::ptrdiff_t>(count), memory_.begin(),
                   [](char byte) { return static_cast<std::uint8_t>(byte); });
}

bool I2cEeprom::start(I2cDirection direction) {
    if (now_() < ready_) {
        return false;
    }
    // Only a stop condition programs: data before a repeated start is forgotten.
    latched_.clear();
    addressBytesWanted_ = direction == I2cDirection::Write ? geometry_.addressBytes : 0;
    return true;
}

bool I2cEeprom::take(std::uint8_t byte) {
    if (addressBytesWanted_ > 0) {
        takeAddress(byte);
        return true;
    }
    latched_.push_back({address_, byte});
    const std::size_t page = address_ / geometry_.pageBytes * geometry_.pageBytes;
    address_ = page + (address_ + 1) % geometry_.pageBytes;
    return true;
}

std::uint8_t I2cEeprom::give() {
    const std::uint8_t byte = memory_[address_];
    address_ = (address_ + 1) % memory_.size();
    return byte;
}

void I2cEeprom::stop() {
    if (latched_.empty()) {
        return;
    }
    for (const Latched& latched : latched_) {
        memory_[latched.address] = latched.value;
    }
    latched_.clear();
    ready_ = now_() + kWriteCycle;
}

void I2cEeprom::losePower() {
    latched_.clear();
    address_ = 0;
    ready_ = {};
}

/// The bits above the chip's size mean nothing.
void I2cEeprom::takeAddress(std::uint8_t byte) {
    if (addressBytesWanted_ == geometry_.addressBytes) {
        address_ = 0;
    }
    address_ = (address_ << 8 | byte) % memory_.size();
    --addressBytesWanted_;
}

}  // namespace boardsim
