#include "Tools/boardsim/Models/MdioMaster.h"

namespace boardsim {
namespace {

constexpr std::uint32_t kOnWires = 0x80000000;
constexpr std::uint32_t kNotReady = 0x40000000;

constexpr unsigned kStart = 1;
constexpr unsigned kReadOpcode = 2;
constexpr unsigned kWriteOpcode = 1;
constexpr unsigned kWriteTurnaround = 2;

constexpr unsigned field(std::uint32_t frame, unsigned lowest, unsigned bits) {
    return frame >> lowest & ((1U << bits) - 1);
}

}  // namespace

RegisterValue MdioMaster::read(std::uint32_t offset, unsigned width) {
    if (Refusal refused = refuseUnlessWord(offset, width)) {
        return {0, std::move(refused)};
    }
    return {busyBits() | data_};
}

Refusal MdioMaster::write(std::uint32_t offset, unsigned width, std::uint64_t value) {
    if (Refusal refused = refuseUnlessWord(offset, width)) {
        return refused;
    }
    if (busyBits() != 0) {
        return "a frame is on the wires";
    }
    const auto frame = static_cast<std::uint32_t>(value);
    const unsigned opcode = field(frame, 28, 2);
    if (field(frame, 30, 2) != kStart || (opcode != kReadOpcode && opcode != kWriteOpcode)) {
        return "no frame of clause 22";
    }
    if (opcode == kWriteOpcode && field(frame, 16, 2) != kWriteTurnaround) {
        return "a write frame without its turnaround";
    }

    const unsigned phy = field(frame, 23, 5);
    const unsigned reg = field(frame, 18, 5);
    if (opcode == kWriteOpcode) {
        bus_.write(phy, reg, static_cast<std::uint16_t>(frame));
    } else {
        data_ = bus_.read(phy, reg);
    }
    frameEnd_ = clock_() + kFrameTime;
    isHanging_ = hang_ && hang_->strikes();
    return std::nullopt;
}

std::uint32_t MdioMaster::busyBits() const {
    if (isHanging_) {
        return kOnWires | kNotReady;
    }
    const ModelTime now = clock_();
    return (now < frameEnd_ ? kOnWires : 0) | (now < frameEnd_ + kIdleTime ? kNotReady : 0);
}

}  // namespace boardsim
