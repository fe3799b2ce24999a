#include "Tools/boardsim/Host/RegisterTrap/RegisterTrap.h"

#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>

#include "Tools/boardsim/Host/RegisterTrap/Emulator.h"
#include "Tools/boardsim/Host/RegisterTrap/FaultHandler.h"
#include "Tools/boardsim/Host/RegisterTrap/SignalBlocker.h"

namespace boardsim {

namespace {

[[noreturn]] void refuse(const ucontext_t& context, std::uintptr_t address, const Window& window) {
    MessageBuffer message;
    message << "boardsim: cannot emulate the access to register ";
    message.hex(window.fileOffset + (address - window.begin)) << " by ";
    Emulator::describe(context, message);
    message.print();
    ::_exit(RegisterTrap::kUnknownInstructionStatus);
}

/// Nobody may own the lock while the process is copied: the copy would wait for an owner that it does not
/// have.
struct ForkGuard {
    static void before() {
        sigset_t all;
        sigfillset(&all);
        sigset_t now;
        pthread_sigmask(SIG_SETMASK, &all, &now);
        held->lock();
        mask = now;
    }
    static void after() {
        const sigset_t then = mask;
        held->unlock();
        pthread_sigmask(SIG_SETMASK, &then, nullptr);
    }
    static inline SpinLock* held = nullptr;
    static inline sigset_t mask{};
};

}  // namespace

RegisterTrap& RegisterTrap::instance() noexcept {
    static constinit RegisterTrap trap;
    return trap;
}

bool RegisterTrap::prepare() noexcept {
    if (!isInUse_) {
        if (!Emulator::prepare()) {
            return false;
        }
        ForkGuard::held = &lock_;
        pthread_atfork(ForkGuard::before, ForkGuard::after, ForkGuard::after);
        isInUse_ = true;
    }
    return FaultHandler::install(onFault);
}

void* RegisterTrap::map(const MappingRequest& request, RegisterObserver& observer) noexcept {
    const SignalBlocker blocker;
    const std::lock_guard guard(lock_);
    if (!prepare()) {
        errno = ENOMEM;
        return MAP_FAILED;
    }

    MappingRequest second = request;
    second.address = nullptr;
    second.flags = MAP_SHARED;
    second.protection = PROT_READ | PROT_WRITE;
    void* alias = systemMap(second);
    if (alias == MAP_FAILED && !(request.protection & PROT_WRITE)) {
        second.protection = PROT_READ;  // the file is open for reading only
        alias = systemMap(second);
    }
    if (alias == MAP_FAILED) {
        return MAP_FAILED;
    }

    MappingRequest first = request;
    first.protection = PROT_NONE;
    void* base = systemMap(first);
    if (base == MAP_FAILED) {
        const int reason = errno;
        systemUnmap(alias, request.length);
        errno = reason;
        return MAP_FAILED;
    }
    if (request.flags & MAP_FIXED) {
        windows_.cut(reinterpret_cast<std::uintptr_t>(base), request.length);
    }

    Window window;
    window.begin = reinterpret_cast<std::uintptr_t>(base);
    window.length = roundToPages(request.length);
    window.alias = static_cast<std::byte*>(alias);
    window.fileOffset = static_cast<std::uint64_t>(request.offset);
    window.readable = request.protection != PROT_NONE;
    window.writable = request.protection & PROT_WRITE;
    window.observer = &observer;
    if (windows_.add(window)) {
        return base;
    }

    systemUnmap(alias, request.length);
    systemUnmap(base, request.length);
    errno = ENOMEM;
    return MAP_FAILED;
}

int RegisterTrap::unmap(void* address, std::size_t length) noexcept {
    const SignalBlocker blocker;
    const std::lock_guard guard(lock_);
    if (systemUnmap(address, length) != 0) {
        return -1;
    }
    windows_.cut(reinterpret_cast<std::uintptr_t>(address), length);
    return 0;
}

void RegisterTrap::abandon(const RegisterObserver& observer) noexcept {
    const SignalBlocker blocker;
    const std::lock_guard guard(lock_);
    windows_.removeAllOf(observer);
}

void* RegisterTrap::mapUntrapped(const MappingRequest& request) noexcept {
    if (!(request.flags & MAP_FIXED)) {
        return systemMap(request);
    }
    const SignalBlocker blocker;
    const std::lock_guard guard(lock_);
    void* base = systemMap(request);
    if (base != MAP_FAILED) {
        windows_.cut(reinterpret_cast<std::uintptr_t>(base), request.length);
    }
    return base;
}

void RegisterTrap::onFault(int signal, siginfo_t* info, void* context) {
    const int errnoBefore = errno;
    if (!instance().finishAccess(*info, *static_cast<ucontext_t*>(context))) {
        FaultHandler::passOn(signal, info, context);
    }
    errno = errnoBefore;
}

bool RegisterTrap::finishAccess(const siginfo_t& info, ucontext_t& context) noexcept {
    if (info.si_code != SEGV_ACCERR) {
        return false;
    }
    const auto address = reinterpret_cast<std::uintptr_t>(info.si_addr);
    // The handler runs with all signals blocked.
    const std::lock_guard guard(lock_);
    const Window* window = windows_.find(address, 1);
    if (!window) {
        return false;
    }
    const Outcome outcome = Emulator::finish(context, RegisterBus(windows_));
    if (outcome == Outcome::Unknown) {
        refuse(context, address, *window);
    }
    return outcome == Outcome::Done;
}

}  // namespace boardsim
