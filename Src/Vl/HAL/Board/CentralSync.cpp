// What the control processor tells of the central sync block, and tells it.
#include "Vl/Common/Log/LogInterface.h"
#include "Vl/HAL/Board/CPInterface.h"
#include "Vl/HAL/Board/SyncBlock.h"

namespace Valen {
namespace {

constexpr int kDone = 1;
constexpr int kSecondsOfDay = 24 * 60 * 60;
constexpr NetConfigId kNoneForHardware = 0;

void logVitc(VitcCode code) {
    VL_LOG(CPCardInterface, DEBUG, "VITC set to: %08X, %08X", code.low, code.high);
}

}  // namespace

std::optional<SyncBlock> CPInterface::syncBlock() const {
    volatile std::uint32_t* registers = fpga_.centralSync();
    return registers != nullptr ? std::optional(SyncBlock(registers)) : std::nullopt;
}

unsigned int CPInterface::getTimestamp() {
    return getSyncWord().second;
}

std::pair<bool, unsigned int> CPInterface::getSyncWord() const {
    const auto sync = syncBlock();
    return sync ? std::pair(true, sync->syncWord()) : std::pair(false, 0U);
}

std::uint64_t CPInterface::getSyncMaster() const {
    const auto sync = syncBlock();
    return sync ? sync->masterId() : 0;
}

std::uint64_t CPInterface::getSyncID() const {
    const auto sync = syncBlock();
    return sync ? sync->id() : 0;
}

bool CPInterface::isSyncMaster() const {
    const auto sync = syncBlock();
    return sync && sync->isMaster();
}

bool CPInterface::setSyncNetConfigId(NetConfigId id) {
    auto sync = syncBlock();
    if (!sync) {
        VL_LOG(CPCardInterface, SERVICE, "Failed to set Sync NetConfigId!");
        return false;
    }
    const NetConfigId written = id == kNoNetConfigId ? kNoneForHardware : id;
    sync->setNetConfigId(written);
    VL_LOG(CPCardInterface, SERVICE, "Set new Sync NetConfigId: %d", static_cast<int>(written));
    return true;
}

bool CPInterface::setVitc(int secondsOfDay) {
    auto sync = syncBlock();
    if (!sync) {
        return false;
    }
    // A second before midnight is one of the day before.
    const int seconds = (secondsOfDay % kSecondsOfDay + kSecondsOfDay) % kSecondsOfDay;
    constexpr VitcRate kAnyRate = VitcRate::Frames30;  // the first frame is the first at any
    const VitcCode code = VitcCode::pack({.seconds = static_cast<std::uint32_t>(seconds)}, kAnyRate);
    sync->startVitc(code);
    logVitc(code);
    return true;
}

int CPInterface::setVitcData(const Vitc& time) {
    auto sync = syncBlock();
    if (!sync) {
        VL_LOG(CPCardInterface, DEBUG, "could not get vitc!");
        return kNoSyncBlock;
    }
    const VitcCode code = VitcCode::pack(time, sync->vitcRate());
    sync->setVitc(code);
    logVitc(code);
    return kDone;
}

bool CPInterface::getVitcData(Vitc& time) const {
    const auto sync = syncBlock();
    if (!sync) {
        VL_LOG(CPCardInterface, DEBUG, "could not get vitc!");
        return false;
    }
    const VitcCode code = sync->vitc();
    time = code.unpack(sync->vitcRate());
    return true;
}

}  // namespace Valen
