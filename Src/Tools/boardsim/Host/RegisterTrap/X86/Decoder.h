#pragma once

#include <array>
#include <cstdint>

#include "Tools/boardsim/Host/RegisterTrap/Disassembler.h"
#include "Tools/boardsim/Host/RegisterTrap/X86/Instruction.h"

namespace boardsim::X86 {

/// Turns the bytes at an address into an Instruction, and remembers what it has decoded: a program polls its
/// registers from few places. Not thread-safe; async-signal-safe after open().
class Decoder {
public:
    constexpr Decoder() = default;

    /// Allocates; call it outside signal handlers. @return false when the disassembler cannot be opened
    bool open() noexcept { return disassembler_.open(); }

    /// @return the instruction at an address, valid until the next call; null when it is none that can be
    ///         emulated
    const Instruction* decode(std::uint64_t address) noexcept;

    /// For messages.
    Disassembler& text() noexcept { return disassembler_; }

private:
    struct Entry {
        std::uint64_t address = 0;
        std::array<std::uint8_t, 15> code{};  ///< to notice that other code has come to the same address
        Instruction instruction;
    };

    Disassembler disassembler_;
    std::array<Entry, 256> cache_{};
};

}  // namespace boardsim::X86
