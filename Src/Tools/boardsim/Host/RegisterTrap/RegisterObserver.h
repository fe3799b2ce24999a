#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>

#include "Tools/boardsim/Host/RegisterTrap/RegisterAccess.h"

namespace boardsim {

/// A stretch of the register file.
struct RegisterRange {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;  ///< behind its last byte

    bool isEmpty() const noexcept { return begin >= end; }
    bool contains(std::uint64_t offset) const noexcept { return offset >= begin && offset < end; }
};

/// What stands behind a register window: it may prepare what a read will find and act on what was written.
///
/// Every call comes from inside the fault handler, on the thread that made the access, with all signals
/// blocked and the trap's lock held: accesses of several threads arrive one after the other and in the order
/// in which they take effect. An implementation must be async-signal-safe (no allocation, no locks that the
/// program may hold) and must not touch a register window itself, only the memory it is handed.
class RegisterObserver {
public:
    /// The first stretch, not before `from`, in which accesses are of interest; empty when none follows.
    /// Pages that are of no interest may be mapped without a window. By default everything is.
    virtual RegisterRange nextObserved(std::uint64_t from) const noexcept {
        return {from, std::numeric_limits<std::uint64_t>::max()};
    }

    /// Called before a read takes its value from `memory`, which may be changed so that the read sees it.
    /// @param memory the register itself, `memory.size()` is the width of the access. Writable only when the
    ///               window's file was opened for writing.
    /// @param offset byte offset of the register in the mapped file
    /// @return what the read finds instead of the memory's content; only for accesses of 8 bytes or less.
    virtual std::optional<std::uint64_t> beforeRead(std::span<std::byte> memory, std::uint64_t offset) = 0;

    /// Called after the access has taken effect, read or write.
    /// @param memory as above; a change shows in the next read
    virtual void afterAccess(const RegisterAccess& access, std::span<std::byte> memory) = 0;

protected:
    // Nobody owns an observer by this type; a trivial destructor lets one serve until the process is gone.
    ~RegisterObserver() = default;
};

}  // namespace boardsim
