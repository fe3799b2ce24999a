#include "Tools/boardsim/Board/BoardRegisters.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace boardsim {
namespace {

/// A shift register as long as a word: what goes in comes out with the next word.
SpiSlave makeShiftRegister() {
    return [held = std::uint32_t{0}](std::uint32_t word) mutable { return std::exchange(held, word); };
}

}  // namespace

BoardRegisters::BoardRegisters(const BoardDescription& board, const ModelClock& clock)
    : mdioMaster_(mdio_, clock), mac_(clock), spi_(clock) {
    if (board.mdio && place(board, board.mdio->core, MdioMaster::kBytes, mdioMaster_)) {
        addMdio(*board.mdio, clock);
    }
    if (place(board, board.macCore, TripleSpeedMac::kBytes, mac_)) {
        weaknesses_.push_back(
            {"mac", board.macCore, "reset", [this](const FaultSchedule& when) { mac_.hangInReset(when); }});
    }
    spi_.attach(0, makeShiftRegister());
    place(board, board.spiMasterCore, SpiMaster::kBytes, spi_);
}

/// @return false when the board has no such core.
bool BoardRegisters::place(const BoardDescription& board, const std::string& core, std::uint32_t bytes,
                           RegisterBlock& block) {
    const std::optional<std::uint32_t> address = board.addressOf(core);
    if (address) {
        add({core, *address, bytes, &block, true});
    }
    return address.has_value();
}

void BoardRegisters::addMdio(const MdioPart& mdio, const ModelClock& clock) {
    weaknesses_.push_back(
        {"mdio", mdio.core, "busy", [this](const FaultSchedule& when) { mdioMaster_.hang(when); }});
    for (const MdioPhy& phy : mdio.phys) {
        addPhy(mdio.core, phy, clock);
    }
}

void BoardRegisters::addPhy(const std::string& core, const MdioPhy& description, const ModelClock& clock) {
    phys_.push_back(makePhy(description.model, clock));
    Phy& phy = *phys_.back();
    mdio_.attach(description.address, phy);
    const std::string device = core + "@" + std::to_string(description.address);
    weaknesses_.push_back(
        {"mdio", device, "no-answer", [&phy](const FaultSchedule& when) { phy.beSilent(when); }});
    weaknesses_.push_back(
        {"mdio", device, "link-down", [&phy](const FaultSchedule& when) { phy.loseLink(when); }});
}

bool BoardRegisters::apply(const Fault& fault) {
    std::string known;
    for (const Weakness& weakness : weaknesses_) {
        if (weakness.kind != fault.kind) {
            continue;
        }
        if (weakness.device == fault.device && weakness.action == fault.action && fault.value.empty()) {
            weakness.strike(fault.schedule);
            return true;
        }
        known += (known.empty() ? "" : ", ") + weakness.kind + ":" + weakness.device + ":" + weakness.action;
    }
    if (!known.empty()) {
        throw std::invalid_argument("--fault " + fault.text + ": there are " + known);
    }
    return false;
}

const PlacedBlock* BoardRegisters::find(std::uint64_t offset) const {
    const auto found = std::find_if(blocks_.begin(), blocks_.end(),
                                    [&](const PlacedBlock& block) { return block.contains(offset); });
    return found == blocks_.end() ? nullptr : &*found;
}

std::string BoardRegisters::actingRanges() const {
    std::string ranges;
    for (const PlacedBlock& block : blocks_) {
        if (block.acts) {
            std::array<char, 32> range{};
            std::snprintf(range.data(), range.size(), "%s%" PRIx32 "-%" PRIx32, ranges.empty() ? "" : ",",
                          block.base, block.base + block.bytes - 1);
            ranges += range.data();
        }
    }
    return ranges;
}

}  // namespace boardsim
