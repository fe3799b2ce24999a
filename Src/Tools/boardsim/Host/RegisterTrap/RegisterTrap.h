#pragma once

#include <atomic>
#include <csignal>
#include <cstddef>

#include "Tools/boardsim/Host/RegisterTrap/RegisterObserver.h"
#include "Tools/boardsim/Host/RegisterTrap/SpinLock.h"
#include "Tools/boardsim/Host/RegisterTrap/SystemMapping.h"
#include "Tools/boardsim/Host/RegisterTrap/WindowTable.h"

namespace boardsim {

/// The process's SIGSEGV handler and the register windows that it serves. A window is a range of addresses
/// without access rights: each access faults, is decoded, carried out on a second mapping of the same file
/// and shown to the window's observer. Other threads never find the window open, so no access is lost.
///
/// A fault elsewhere goes to the handler that was installed before, or ends the process as it would have
/// without us. An instruction that is not known ends the process with status 99 and its text on standard
/// error. All operations may be called from any thread, but not from a RegisterObserver.
class RegisterTrap {
public:
    static constexpr int kUnknownInstructionStatus = 99;

    /// The only one; it is never destroyed, because threads may outlive main().
    static RegisterTrap& instance() noexcept;

    /// Whether there has ever been a window. Until then nothing here needs to be asked about a mapping.
    static bool isInUse() noexcept { return isInUse_; }

    /// Like mmap of a shared mapping, but the result is a window. `request.protection` tells which accesses
    /// the window admits; one that it does not admit is a crash. `observer` must live until the window is
    /// unmapped. Installs the fault handler when it is not (any longer) in place.
    /// @return the address of the window, or MAP_FAILED and errno (ENOMEM also when there are too many
    /// windows)
    void* map(const MappingRequest& request, RegisterObserver& observer) noexcept;

    /// Like munmap, for any range of addresses: windows in it are gone, in part or as a whole.
    /// Where the kernel refuses, windows stay. @return 0, or -1 and errno
    int unmap(void* address, std::size_t length) noexcept;

    /// Ends the windows of an observer that is about to go. Their addresses stay taken; to access them is a
    /// crash from now on.
    void abandon(const RegisterObserver& observer) noexcept;

    /// Like mmap, for a mapping that is no window but may replace some (MAP_FIXED).
    void* mapUntrapped(const MappingRequest& request) noexcept;

private:
    constexpr RegisterTrap() = default;

    static void onFault(int signal, siginfo_t* info, void* context);
    bool finishAccess(const siginfo_t& info, ucontext_t& context) noexcept;
    bool prepare() noexcept;

    SpinLock lock_;
    WindowTable windows_;
    static constinit inline std::atomic<bool> isInUse_ = false;
};

}  // namespace boardsim
