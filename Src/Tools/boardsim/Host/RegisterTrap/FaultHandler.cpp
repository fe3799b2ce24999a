#include "Tools/boardsim/Host/RegisterTrap/FaultHandler.h"

#include <ucontext.h>

namespace boardsim::FaultHandler {

namespace {

struct sigaction previous;

/// Sent by a process (kill, raise) and not by a faulting instruction.
bool wasSent(const siginfo_t& info) noexcept {
    return info.si_code <= 0;
}

void useDefaultAction(int signal, bool sent) noexcept {
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(signal, &action, nullptr);
    // A faulting instruction faults again by itself; a signal that was sent must be sent again. It is blocked
    // until the handler returns.
    if (sent) {
        raise(signal);
    }
}

void call(const struct sigaction& action, int signal, siginfo_t* info, void* context) noexcept {
    sigset_t mask = action.sa_mask;
    sigorset(&mask, &mask, &static_cast<ucontext_t*>(context)->uc_sigmask);
    if (!(action.sa_flags & SA_NODEFER)) {
        sigaddset(&mask, signal);
    }
    pthread_sigmask(SIG_SETMASK, &mask, nullptr);

    if (action.sa_flags & SA_SIGINFO) {
        action.sa_sigaction(signal, info, context);
    } else {
        action.sa_handler(signal);
    }
}

}  // namespace

bool install(Function handler) noexcept {
    struct sigaction current;
    if (sigaction(SIGSEGV, nullptr, &current) != 0) {
        return false;
    }
    if ((current.sa_flags & SA_SIGINFO) && current.sa_sigaction == handler) {
        return true;
    }
    previous = current;

    struct sigaction ours = {};
    ours.sa_sigaction = handler;
    ours.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_RESTART;
    sigfillset(&ours.sa_mask);
    return sigaction(SIGSEGV, &ours, nullptr) == 0;
}

void passOn(int signal, siginfo_t* info, void* context) noexcept {
    const struct sigaction action = previous;
    const bool isFunction =
        (action.sa_flags & SA_SIGINFO) || (action.sa_handler != SIG_DFL && action.sa_handler != SIG_IGN);
    if (isFunction) {
        if (action.sa_flags & static_cast<int>(SA_RESETHAND)) {
            previous = {};
            previous.sa_handler = SIG_DFL;
        }
        call(action, signal, info, context);
        return;
    }
    // Only a signal that was sent can be ignored; the kernel kills for a fault all the same.
    if (action.sa_handler == SIG_IGN && wasSent(*info)) {
        return;
    }
    useDefaultAction(signal, wasSent(*info));
}

}  // namespace boardsim::FaultHandler
