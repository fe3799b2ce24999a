#include "Vl/HAL/Board/SyncBlock.h"

#include <cstddef>

namespace Valen {
namespace {

/// Registers, by their word.
enum Register : unsigned int {
    Id = 4 / 4,  // the next register's low three bytes are its high bytes
    Status = 12 / 4,
    NetConfigId = 16 / 4,
    MasterId = 28 / 4,  // as Id
    SyncWord = 52 / 4,
    VitcLow = 56 / 4,
    VitcHigh = 60 / 4,
};

constexpr std::uint32_t kIsMaster = 1U << 0;  // of Status
constexpr std::uint32_t kFrames25 = 1U << 26;

constexpr unsigned int kHighBytes = 3;

/// What was written is in the registers, not in a buffer of the processor's from which it would be read back,
/// and nothing is read before its time; however the registers are mapped.
void finishAccesses() {
    __sync_synchronize();
}

}  // namespace

std::uint32_t SyncBlock::syncWord() const {
    return registers_[SyncWord];
}

std::uint64_t SyncBlock::id() const {
    return identifier(Id);
}

std::uint64_t SyncBlock::masterId() const {
    return identifier(MasterId);
}

std::uint64_t SyncBlock::identifier(unsigned int lowWord) const {
    std::uint64_t identifier = registers_[lowWord];
    const auto* high = reinterpret_cast<const volatile std::uint8_t*>(registers_ + lowWord + 1);
    for (unsigned int i = 0; i < kHighBytes; ++i) {
        identifier |= std::uint64_t{high[i]} << (32 + 8 * i);
    }
    return identifier;
}

bool SyncBlock::isMaster() const {
    return (registers_[Status] & kIsMaster) != 0;
}

void SyncBlock::setNetConfigId(std::uint32_t id) {
    registers_[NetConfigId] = id;
}

VitcRate SyncBlock::vitcRate() const {
    return (registers_[Status] & kFrames25) != 0 ? VitcRate::Frames25 : VitcRate::Frames30;
}

VitcCode SyncBlock::vitc() const {
    while (true) {
        const std::uint32_t before = registers_[VitcHigh];
        finishAccesses();
        const std::uint32_t low = registers_[VitcLow];
        finishAccesses();
        if (registers_[VitcHigh] == before) {
            return {low, before};
        }
    }
}

void SyncBlock::setVitc(VitcCode code) {
    do {
        registers_[VitcHigh] = code.high;
        finishAccesses();
        registers_[VitcLow] = code.low;
        finishAccesses();
    } while (registers_[VitcHigh] != code.high);
}

void SyncBlock::startVitc(VitcCode code) {
    registers_[VitcLow] = 0;
    finishAccesses();
    registers_[VitcHigh] = code.high;
    finishAccesses();
    registers_[VitcLow] = code.low;
}

}  // namespace Valen
