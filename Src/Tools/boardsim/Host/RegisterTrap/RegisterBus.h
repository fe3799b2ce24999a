#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "Tools/boardsim/Host/RegisterTrap/WindowTable.h"

namespace boardsim {

/// Carries out the memory accesses of an emulated instruction, by the addresses that the program uses:
/// inside a window on its alias, with the observer's knowledge; anywhere else on the memory itself, for the
/// other operand of a copy. Async-signal-safe; the caller holds the trap's lock.
class RegisterBus {
public:
    explicit RegisterBus(const WindowTable& windows) noexcept : table_(windows) {}

    /// One access of `data.size()` bytes: 1, 2, 4, 8, 16, 32 or 64. Up to 8 bytes move in one piece.
    /// @return false, with nothing done, when the access crosses the edge of a window or when the program did
    ///         not ask for this direction when it mapped it: then it is a crash.
    bool read(std::uintptr_t address, std::span<std::byte> data) const noexcept;
    bool write(std::uintptr_t address, std::span<const std::byte> data) const noexcept;

private:
    const WindowTable& table_;
};

}  // namespace boardsim
