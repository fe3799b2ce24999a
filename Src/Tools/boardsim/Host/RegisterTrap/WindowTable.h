#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "Tools/boardsim/Host/RegisterTrap/Window.h"

namespace boardsim {

/// The windows of this process, in a table of fixed size: looking one up is async-signal-safe.
/// Not thread-safe: the owner locks.
class WindowTable {
public:
    static constexpr std::size_t kCapacity = 64;

    /// @return false when the table is full
    bool add(const Window& window) noexcept;

    /// The first window that has a byte in `address … address + size - 1`, or null.
    const Window* find(std::uintptr_t address, std::size_t size) const noexcept;

    /// Takes a range of addresses, rounded up to whole pages, out of every window, and unmaps the same part
    /// of its alias. What is left of a window at either side stays a window. A hole in the middle needs one
    /// more entry; in a full table the part behind the hole is no longer trapped.
    void cut(std::uintptr_t address, std::size_t size) noexcept;

    /// Takes every window of an observer out of the table and unmaps its alias.
    void removeAllOf(const RegisterObserver& observer) noexcept;

private:
    std::array<Window, kCapacity> windows_{};
};

}  // namespace boardsim
