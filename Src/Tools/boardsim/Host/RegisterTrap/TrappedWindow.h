#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "Tools/boardsim/Host/RegisterTrap/RegisterObserver.h"

namespace boardsim {

/// A register window over a whole file, for as long as this object lives. Owns the mapping, neither the
/// descriptor, which may be closed at once, nor the observer, which must live longer.
/// Accesses to the window may come from any thread.
class TrappedWindow {
public:
    /// @param descriptor open for reading and writing, at least `length` bytes long
    /// @throws std::system_error when it cannot be mapped
    TrappedWindow(int descriptor, std::size_t length, RegisterObserver& observer);
    ~TrappedWindow();
    TrappedWindow(const TrappedWindow&) = delete;
    TrappedWindow& operator=(const TrappedWindow&) = delete;

    /// The first register; each access to it and behind it goes through the observer.
    void* base() const noexcept { return window_.data(); }
    std::size_t length() const noexcept { return window_.size(); }

private:
    std::span<std::byte> window_;
};

}  // namespace boardsim
