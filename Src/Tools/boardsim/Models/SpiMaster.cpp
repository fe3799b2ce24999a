#include "Tools/boardsim/Models/SpiMaster.h"

#include <utility>

namespace boardsim {
namespace {

enum Offset : std::uint32_t {
    kRxData = 0x00,
    kTxData = 0x04,
    kStatus = 0x08,
    kControl = 0x0C,
    kSlaveSelect = 0x14,
    kEndOfPacket = 0x18,
};

constexpr std::uint32_t kReceiveOverrun = 1U << 3;
constexpr std::uint32_t kTransmitOverrun = 1U << 4;
constexpr std::uint32_t kShifterEmpty = 1U << 5;
constexpr std::uint32_t kTransmitReady = 1U << 6;
constexpr std::uint32_t kReceiveReady = 1U << 7;
constexpr std::uint32_t kError = 1U << 8;

constexpr std::uint32_t kControlBits = 0x7D8;  // IROE, ITOE, ITRDY, IRRDY, IE, IEOP, SSO
constexpr std::uint32_t kNobody = 0xFFFFFFFF;

}  // namespace

RegisterValue SpiMaster::read(std::uint32_t offset, unsigned width) {
    if (Refusal refused = refuseUnlessWord(offset, width)) {
        return {0, std::move(refused)};
    }
    advance();
    switch (offset) {
        case kRxData:
            isReceived_ = false;
            return {received_};
        case kStatus:
            return {status()};
        case kControl:
            return {control_};
        case kSlaveSelect:
            return {selected_};
        case kEndOfPacket:
            return {endOfPacket_};
        default:
            return {0, "no register to read"};
    }
}

Refusal SpiMaster::write(std::uint32_t offset, unsigned width, std::uint64_t value) {
    if (Refusal refused = refuseUnlessWord(offset, width)) {
        return refused;
    }
    advance();
    const auto word = static_cast<std::uint32_t>(value);
    switch (offset) {
        case kTxData:
            return send(word);
        case kStatus:
            hasOverrun_ = false;
            hasOverflown_ = false;
            return std::nullopt;
        case kControl:
            control_ = word & kControlBits;
            return std::nullopt;
        case kSlaveSelect:
            selected_ = word;
            return std::nullopt;
        case kEndOfPacket:
            endOfPacket_ = word;
            return std::nullopt;
        default:
            return "no register to write";
    }
}

std::uint32_t SpiMaster::status() const {
    return (hasOverrun_ ? kReceiveOverrun : 0) | (hasOverflown_ ? kTransmitOverrun : 0) |
           (isShifting_ ? 0 : kShifterEmpty) | (isWaiting_ ? 0 : kTransmitReady) |
           (isReceived_ ? kReceiveReady : 0) | (hasOverrun_ || hasOverflown_ ? kError : 0);
}

Refusal SpiMaster::send(std::uint32_t word) {
    if (isWaiting_) {
        hasOverflown_ = true;
        return "the transmitter is not ready";
    }
    if (isShifting_) {
        waiting_ = word;
        isWaiting_ = true;
    } else {
        startShifting(word, clock_());
    }
    return std::nullopt;
}

/// Lets time pass for the shifter.
void SpiMaster::advance() {
    while (isShifting_ && clock_() >= shiftEnd_) {
        isShifting_ = false;
        receive(arriving_);
        if (std::exchange(isWaiting_, false)) {
            startShifting(waiting_, shiftEnd_);
        }
    }
}

void SpiMaster::startShifting(std::uint32_t word, ModelTime begin) {
    isShifting_ = true;
    shiftEnd_ = begin + kWordTime;
    arriving_ = exchange(word);
}

void SpiMaster::receive(std::uint32_t word) {
    if (isReceived_) {
        hasOverrun_ = true;  // the new word is lost
        return;
    }
    received_ = word;
    isReceived_ = true;
}

std::uint32_t SpiMaster::exchange(std::uint32_t word) const {
    std::uint32_t line = kNobody;
    for (unsigned i = 0; i < kSlaves; ++i) {
        if ((selected_ >> i & 1) && slaves_[i]) {
            line &= slaves_[i](word);
        }
    }
    return line;
}

}  // namespace boardsim
