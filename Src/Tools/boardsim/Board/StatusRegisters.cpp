#include "Tools/boardsim/Board/StatusRegisters.h"

#include <algorithm>
#include <stdexcept>

namespace boardsim {
namespace {

constexpr const char* kCardId = "cardid";

constexpr std::uint32_t kOnes = 0xFFFFFFFF;

[[noreturn]] void refuse(const Fault& fault, const std::string& why) {
    throw std::invalid_argument("--fault " + fault.text + ": " + why);
}

}  // namespace

StatusRegisters::StatusRegisters(const BoardDescription& board, const BoardParts& missing) {
    addCardId(board);
    if (board.sync && !missing.has(BoardPart::Sync)) {
        if (const std::optional<std::uint32_t> address = board.addressOf(board.sync->core)) {
            syncCore_ = board.sync->core;
            syncAddress_ = *address;
            sync_.emplace(board.sync->settings);
        }
    }
    if (board.misc) {
        addTemperature(board, board.misc->core, TemperatureCode::Offset, board.misc->celsius,
                       board.misc->others);
    }
    for (const TemperaturePart& part : board.temperatures) {
        addTemperature(board, part.core, TemperatureCode::Shifted, part.celsius, 0);
    }
}

void StatusRegisters::addCardId(const BoardDescription& board) {
    const std::optional<std::uint32_t> address = board.addressOf(kCardId);
    if (address && *address + sizeof board.fpga->cardId <= board.fpga->bytes) {
        std::uint32_t offset = *address;
        for (const std::uint32_t value : board.fpga->cardId) {
            cardId_.push_back({offset, value});
            offset += sizeof value;
        }
    }
}

void StatusRegisters::addTemperature(const BoardDescription& board, const std::string& core,
                                     TemperatureCode code, int celsius, std::uint32_t others) {
    if (const std::optional<std::uint32_t> address = board.addressOf(core)) {
        temperatures_.push_back(
            {core, *address, std::make_unique<TemperatureRegister>(code, celsius, others)});
    }
}

void StatusRegisters::addTo(BoardRegisters& registers) {
    if (sync_) {
        registers.add({syncCore_, syncAddress_, SyncBlock::kBytes, &*sync_});
    }
    for (const Temperature& each : temperatures_) {
        registers.add({each.core, each.address, TemperatureRegister::kBytes, each.reg.get()});
    }
}

std::vector<RegisterWord> StatusRegisters::powerOn() const {
    std::vector<RegisterWord> words = cardId_;
    if (sync_) {
        std::uint32_t offset = syncAddress_;
        for (const std::uint32_t value : sync_->powerOnValues()) {
            words.push_back({offset, isNonsense_ ? kOnes : value});
            offset += sizeof value;
        }
    }
    for (const Temperature& each : temperatures_) {
        words.push_back({each.address, each.reg->value()});
    }
    return words;
}

void StatusRegisters::attach(std::span<std::uint32_t> memory, ModelTime now) {
    if (sync_ && !isStopped_) {
        sync_->attach(memory.subspan(syncAddress_ / sizeof(std::uint32_t)).first<SyncBlock::kWords>(), now);
    }
}

std::optional<ModelTime> StatusRegisters::nextFrame() const {
    return sync_ ? sync_->nextFrame() : std::nullopt;
}

void StatusRegisters::runUntil(ModelTime now) {
    if (sync_) {
        sync_->runUntil(now);
    }
}

bool StatusRegisters::apply(const Fault& fault) {
    if (fault.kind == "sync") {
        applySync(fault);
        return true;
    }
    if (fault.kind == "temp") {
        applyTemperature(fault);
        return true;
    }
    return false;
}

void StatusRegisters::applySync(const Fault& fault) {
    if (!sync_ || fault.device != syncCore_) {
        refuse(fault, "no sync block '" + fault.device + "'");
    }
    isNonsense_ = isNonsense_ || fault.action == "nonsense";
    isStopped_ = isStopped_ || isNonsense_ || fault.action == "stopped";
    if (fault.action != "nonsense" && fault.action != "stopped") {
        refuse(fault, "no action '" + fault.action + "'; there are stopped, nonsense");
    }
}

void StatusRegisters::applyTemperature(const Fault& fault) {
    const auto found = std::find_if(temperatures_.begin(), temperatures_.end(),
                                    [&](const Temperature& each) { return each.core == fault.device; });
    if (found == temperatures_.end()) {
        refuse(fault, "no temperature register '" + fault.device + "'");
    }
    TemperatureRegister& temperature = *found->reg;
    if (fault.action == "value") {
        const auto largest = static_cast<std::uint64_t>(temperature.largest());
        temperature.setCelsius(static_cast<int>(numberOf(fault, largest)));
    } else if (fault.action == "raw") {
        temperature.setValue(static_cast<std::uint32_t>(numberOf(fault, kOnes)));
    } else {
        refuse(fault, "no action '" + fault.action + "'; there are value, raw");
    }
}

}  // namespace boardsim
