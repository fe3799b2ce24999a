#include "Vl/HAL/Bus/FpgaMdio.h"

#include <chrono>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Fpga/RegisterPoll.h"

namespace Valen::HAL {
namespace {

/// Bits of a management frame: start (01) 31-30, operation 29-28, PHY 27-23, register 22-18, turnaround
/// 17-16, data 15-0.
constexpr std::uint32_t kStart = 0b01U << 30;
constexpr std::uint32_t kWriteOperation = 0b01U << 28;
constexpr std::uint32_t kReadOperation = 0b10U << 28;
constexpr std::uint32_t kWriteTurnaround = 0b10U << 16;
constexpr int kPhyShift = 23;
constexpr int kRegisterShift = 18;
constexpr std::uint32_t kAddressMask = 0x1F;
constexpr std::uint32_t kDataMask = 0xFFFF;

/// Busy bits of the register when it is read.
constexpr std::uint32_t kReading = 1U << 31;
constexpr std::uint32_t kWriting = 1U << 30;

constexpr std::chrono::milliseconds kLongestWait(100);

constexpr std::uint32_t field(int value, std::uint32_t mask, int shift) {
    return (static_cast<std::uint32_t>(value) & mask) << shift;
}

}  // namespace

FpgaMdio::FpgaMdio(volatile std::uint32_t* core, int phyAddress) : core_(core), phyAddress_(phyAddress) {}

bool FpgaMdio::setReg(int reg, int value) {
    if (waitIdle(kReading | kWriting) == kFailed) {
        return false;
    }
    *core_ = addressed(kStart | kWriteOperation | kWriteTurnaround, reg) | field(value, kDataMask, 0);
    return true;
}

int FpgaMdio::getReg(int reg) {
    if (waitIdle(kReading | kWriting) == kFailed) {
        return kFailed;
    }
    *core_ = addressed(kStart | kReadOperation, reg);
    return waitIdle(kReading);
}

void FpgaMdio::changePhyAddress(int phyAddress) {
    phyAddress_ = phyAddress;
}

int FpgaMdio::waitIdle(std::uint32_t busyBits) {
    if (core_ == nullptr) {
        return kFailed;
    }
    const PollResult result = pollUntilClear([this] { return *core_; }, busyBits, kLongestWait);
    if (!result.clear) {
        VL_LOG(CPCardInterface, SERVICE, "MDIO: timeout: 0x%X & %X", result.value, busyBits);
        return kFailed;
    }
    return static_cast<int>(result.value & kDataMask);
}

std::uint32_t FpgaMdio::addressed(std::uint32_t frame, int reg) const {
    return frame | field(phyAddress_, kAddressMask, kPhyShift) | field(reg, kAddressMask, kRegisterShift);
}

}  // namespace Valen::HAL
