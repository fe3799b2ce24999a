#pragma once

#include <capstone/capstone.h>

#include <cstddef>
#include <cstdint>

#include "Tools/boardsim/Host/RegisterTrap/MessageBuffer.h"

namespace boardsim {

/// Capstone for the processor that this program runs on, used in a way that never allocates after open().
/// Not thread-safe.
class Disassembler {
public:
    constexpr Disassembler() = default;

    /// Allocates all that decode() needs, including the tables that Capstone builds on first use.
    /// Further calls do nothing. @return false when Capstone does not know this processor
    bool open() noexcept;

    /// Decodes the instruction at an address. Async-signal-safe.
    /// @return null when the bytes there are no instruction; else valid until the next call, with details
    const cs_insn* decode(std::uintptr_t address) noexcept;

    /// Appends text, bytes and address of the instruction at an address. Async-signal-safe.
    void describe(std::uintptr_t address, MessageBuffer& message) noexcept;

private:
    const cs_insn* decode(std::uintptr_t address, std::size_t available) noexcept;

    csh handle_ = 0;
    cs_insn* instruction_ = nullptr;
};

}  // namespace boardsim
