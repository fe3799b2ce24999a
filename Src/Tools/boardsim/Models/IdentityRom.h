#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "Tools/boardsim/Models/FaultSchedule.h"
#include "Tools/boardsim/Models/FileAnswer.h"

namespace boardsim {

/// What goes wrong with the ROM on demand.
struct RomFaults {
    std::optional<FaultSchedule> failures{};     ///< an access fails with EIO
    std::optional<FaultSchedule> shortReads{};   ///< a read of several bytes gives half of them
    std::optional<FaultSchedule> shortWrites{};  ///< a write of several bytes takes half of them
    std::optional<FaultSchedule> corruption{};   ///< the byte at `corrupt` comes inverted
    std::size_t corrupt = 0;
};

/// The memory that the card starts from, byte by byte, as its kernel driver shows it: 64 KiB, whose first
/// bytes tell what the card is; the rest is erased. Reading ends at its end, writing there is refused with
/// ENOSPC; what reaches beyond it is cut. Not thread-safe.
class IdentityRom {
public:
    static constexpr std::size_t kBytes = 0x10000;

    /// @param contents from the first byte; what does not fit is left out.
    explicit IdentityRom(std::span<const std::uint8_t> contents);

    FileAnswer read(std::uint64_t offset, std::span<std::byte> into);
    FileAnswer write(std::uint64_t offset, std::span<const std::byte> bytes);

    std::byte at(std::size_t offset) const { return memory_.at(offset); }
    RomFaults& faults() { return faults_; }

private:
    std::vector<std::byte> memory_;
    RomFaults faults_;
};

}  // namespace boardsim
