#pragma once

#include <csignal>

namespace boardsim {

/// The process's place in the chain of SIGSEGV handlers.
namespace FaultHandler {

using Function = void (*)(int signal, siginfo_t* info, void* context);

/// Makes `handler` the process's SIGSEGV handler, called with all signals blocked and on the alternate stack
/// where there is one, and remembers the one before it. Does nothing while `handler` is in place.
/// Not thread-safe. @return false when the system refuses
bool install(Function handler) noexcept;

/// Hands a fault to the remembered handler, with the signals blocked that it asked for, or prepares the
/// default action: when the caller returns, the process dies from this signal. Async-signal-safe.
void passOn(int signal, siginfo_t* info, void* context) noexcept;

}  // namespace FaultHandler

}  // namespace boardsim
