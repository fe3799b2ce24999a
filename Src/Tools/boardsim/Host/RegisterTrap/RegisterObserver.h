#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "Tools/boardsim/Host/RegisterTrap/RegisterAccess.h"

namespace boardsim {

/// What stands behind a register window: it may prepare what a read will find and act on what was written.
///
/// Every call comes from inside the fault handler, on the thread that made the access, with all signals
/// blocked and the trap's lock held: accesses of several threads arrive one after the other and in the order
/// in which they take effect. An implementation must be async-signal-safe (no allocation, no locks that the
/// program may hold) and must not touch a register window itself, only the memory it is handed.
class RegisterObserver {
public:
    /// Called before a read takes its value from `memory`, which may be changed so that the read sees it.
    /// @param memory the register itself, `memory.size()` is the width of the access. Writable only when the
    ///               window's file was opened for writing.
    /// @param offset byte offset of the register in the mapped file
    virtual void beforeRead(std::span<std::byte> memory, std::uint64_t offset) = 0;

    /// Called after the access has taken effect, read or write.
    /// @param memory as above; a change shows in the next read
    virtual void afterAccess(const RegisterAccess& access, std::span<std::byte> memory) = 0;

protected:
    // Nobody owns an observer by this type; a trivial destructor lets one serve until the process is gone.
    ~RegisterObserver() = default;
};

}  // namespace boardsim
