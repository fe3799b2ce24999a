#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Models/MdioMaster.h"
#include "Tools/boardsim/Models/RegisterBlock.h"
#include "Tools/boardsim/Models/SpiMaster.h"
#include "Tools/boardsim/Models/TripleSpeedMac.h"

namespace boardsim {

/// A block at its place in the register space.
struct PlacedBlock {
    std::string name;  ///< as the trace calls it
    std::uint32_t base = 0;
    std::uint32_t bytes = 0;
    RegisterBlock* block = nullptr;
    bool acts = false;  ///< whether a program must wait for it; else it reads memory and its writes are told

    bool contains(std::uint64_t offset) const { return offset >= base && offset - base < bytes; }
};

/// The register blocks of a board: finds them by offset and owns those that act. Not thread-safe.
class BoardRegisters {
public:
    BoardRegisters(const BoardDescription& board, const ModelClock& clock);
    BoardRegisters(const BoardRegisters&) = delete;
    BoardRegisters& operator=(const BoardRegisters&) = delete;

    /// Adds a block that lives elsewhere, as long as this.
    void add(PlacedBlock block) { blocks_.push_back(std::move(block)); }

    /// @return null where no block is
    const PlacedBlock* find(std::uint64_t offset) const;

    /// Where the blocks are that act: first and last byte offsets in hexadecimal, "800-803,2000-23ff".
    std::string actingRanges() const;

    /// Makes a device misbehave: "mdio:CORE:busy", "mdio:CORE@ADDRESS:no-answer",
    /// "mdio:CORE@ADDRESS:link-down", "mac:CORE:reset".
    /// @return false when no device here is of that kind
    /// @throws std::invalid_argument when the kind has no such device, or it cannot do that
    bool apply(const Fault& fault);

    /// Every frame on the MDIO bus is told to `listener`.
    void listen(std::function<void(const MdioFrame&)> listener) { mdio_.listen(std::move(listener)); }

private:
    /// What can go wrong, in the words of the command line.
    struct Weakness {
        std::string kind;
        std::string device;
        std::string action;
        std::function<void(const FaultSchedule&)> strike;
    };

    bool place(const BoardDescription& board, const std::string& core, std::uint32_t bytes,
               RegisterBlock& block);
    void addMdio(const MdioPart& mdio, const ModelClock& clock);
    void addPhy(const std::string& core, const MdioPhy& phy, const ModelClock& clock);

    std::vector<std::unique_ptr<Phy>> phys_;
    MdioBus mdio_;
    MdioMaster mdioMaster_;
    TripleSpeedMac mac_;
    SpiMaster spi_;
    std::vector<PlacedBlock> blocks_;
    std::vector<Weakness> weaknesses_;
};

}  // namespace boardsim
