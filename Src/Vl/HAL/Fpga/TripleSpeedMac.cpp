#include "Vl/HAL/Fpga/TripleSpeedMac.h"

#include <chrono>
#include <cstdint>
#include <span>

#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Fpga/RegisterPoll.h"

namespace Valen::HAL {
namespace {

/// Byte offsets of the core's registers.
enum Register : unsigned {
    CommandConfig = 8,
    MacLow = 12,
    MacHigh = 16,
    FrameLength = 20,
    PauseQuanta = 24,
    RxSectionEmpty = 28,
    RxSectionFull = 32,
    TxSectionEmpty = 36,
    TxSectionFull = 40,
    RxAlmostEmpty = 44,
    RxAlmostFull = 48,
    TxAlmostEmpty = 52,
    TxAlmostFull = 56,
    TxInterPacketGap = 92,
    PcsInterfaceMode = 592,
};

/// Bits of CommandConfig.
constexpr unsigned kTransmit = 1U << 0;
constexpr unsigned kReceive = 1U << 1;
constexpr unsigned kGigabit = 1U << 3;
constexpr unsigned kPromiscuous = 1U << 4;
constexpr unsigned kForwardPause = 1U << 7;
constexpr unsigned kReset = 1U << 13;
constexpr unsigned kForwardControlFrames = 1U << 23;
constexpr unsigned kNoLengthCheck = 1U << 24;
constexpr unsigned kMbit10 = 1U << 25;
constexpr unsigned kRunning =
    kTransmit | kReceive | kPromiscuous | kForwardPause | kForwardControlFrames | kNoLengthCheck;

/// Bits of PcsInterfaceMode.
constexpr unsigned kSgmii = 1U << 0;
constexpr unsigned kSgmiiNegotiation = 1U << 1;

constexpr std::chrono::milliseconds kLongestReset(6);

struct RegisterWrite {
    Register address;
    unsigned value;
};

constexpr RegisterWrite kJumboFrames[] = {
    {FrameLength, 9100},
    {TxInterPacketGap, 11},
};

constexpr RegisterWrite kNormalFrames[] = {
    {FrameLength, 1600},
    {TxInterPacketGap, 11},
    // The FIFOs' thresholds, in words; 0 hands on whole frames only.
    {RxSectionEmpty, 1663},
    {RxSectionFull, 0},
    {TxSectionEmpty, 2032},
    {TxSectionFull, 0},
    {RxAlmostEmpty, 8},
    {RxAlmostFull, 8},
    {TxAlmostEmpty, 8},
    {TxAlmostFull, 8},
};

constexpr RegisterWrite kStart[] = {
    {PauseQuanta, 25},
    {CommandConfig, kRunning},
};

void writeAll(CPInterface& cp, unsigned base, std::span<const RegisterWrite> writes) {
    for (const RegisterWrite& write : writes) {
        cp.writeFPGA(base + write.address, write.value);
    }
}

}  // namespace

bool tseMacReset(CPInterface& cp, unsigned base) {
    cp.writeFPGA(base + CommandConfig, kReset);
    const auto read = [&] {
        unsigned value = 0;
        return cp.readFPGA(base + CommandConfig, value) ? value : kReset;
    };
    if (!pollUntilClear(read, kReset, kLongestReset).clear) {
        VL_LOG(CPCardInterface, DEBUG, "tseMacReset: Timeout");
        return false;
    }
    return true;
}

void tseMacConfigure(CPInterface& cp, unsigned base, unsigned macHigh, unsigned macLow, bool jumbo,
                     bool extra) {
    cp.writeFPGA(base + MacLow, macLow);
    cp.writeFPGA(base + MacHigh, macHigh);
    writeAll(cp, base, jumbo ? std::span<const RegisterWrite>(kJumboFrames) : kNormalFrames);
    writeAll(cp, base, kStart);
    if (extra) {
        cp.writeFPGA(base + PcsInterfaceMode, kSgmii | kSgmiiNegotiation);
    }
}

void tseMacSetSpeed(CPInterface& cp, unsigned base, CPInterface::EthSpeed speed) {
    unsigned config = kRunning;
    if (speed == CPInterface::EthSpeed::Mbit10) {
        config |= kMbit10;
    } else if (speed == CPInterface::EthSpeed::Mbit1000) {
        config |= kGigabit;
    }
    cp.writeFPGA(base + CommandConfig, config);
}

}  // namespace Valen::HAL
