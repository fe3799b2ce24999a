#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Tools/boardsim/Board/BoardDescription.h"
#include "Tools/boardsim/Board/BoardPart.h"
#include "Tools/boardsim/Board/BoardRegisters.h"
#include "Tools/boardsim/Board/Fault.h"
#include "Tools/boardsim/Host/WorldPlan.h"
#include "Tools/boardsim/Models/SyncBlock.h"
#include "Tools/boardsim/Models/TemperatureRegister.h"

namespace boardsim {

/// The registers of a board's FPGA that tell something by themselves and are plain memory for a program: the
/// sync block, whose time code runs, the temperatures, and the version of the FPGA. Not thread-safe.
class StatusRegisters {
public:
    /// @param missing may have the sync block.
    StatusRegisters(const BoardDescription& board, const BoardParts& missing);
    StatusRegisters(const StatusRegisters&) = delete;
    StatusRegisters& operator=(const StatusRegisters&) = delete;

    /// Adds the blocks, which live as long as this, for the trace to know what can be written.
    void addTo(BoardRegisters& registers);

    /// What a program finds in the register space before any time has passed.
    std::vector<RegisterWord> powerOn() const;

    /// From now on the time code runs in `memory`, the whole register space; begins at `now`.
    void attach(std::span<std::uint32_t> memory, ModelTime now);

    /// When the time code changes next; nothing where it does not.
    std::optional<ModelTime> nextFrame() const;
    void runUntil(ModelTime now);

    /// Lets a block, named by its core, do something wrong, for good:
    ///
    /// | fault                     | what happens                                            |
    /// |---------------------------|---------------------------------------------------------|
    /// | sync:CORE:stopped         | the time code and the sync word stand                   |
    /// | sync:CORE:nonsense        | all its registers are ones, and it stands               |
    /// | temp:CORE:value=CELSIUS   | it is so warm                                           |
    /// | temp:CORE:raw=NUMBER      | the whole register is that                              |
    ///
    /// @return false when no block here is of that kind
    /// @throws std::invalid_argument when there is no such core or action.
    bool apply(const Fault& fault);

private:
    struct Temperature {
        std::string core;
        std::uint32_t address;
        std::unique_ptr<TemperatureRegister> reg;
    };

    void addCardId(const BoardDescription& board);
    void addTemperature(const BoardDescription& board, const std::string& core, TemperatureCode code,
                        int celsius, std::uint32_t others);
    void applySync(const Fault& fault);
    void applyTemperature(const Fault& fault);

    std::vector<RegisterWord> cardId_;
    std::string syncCore_;
    std::uint32_t syncAddress_ = 0;
    std::optional<SyncBlock> sync_;
    bool isStopped_ = false;
    bool isNonsense_ = false;
    std::vector<Temperature> temperatures_;
};

}  // namespace boardsim
