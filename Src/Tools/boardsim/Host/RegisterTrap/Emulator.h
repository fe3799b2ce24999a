#pragma once

#include <ucontext.h>

#include "Tools/boardsim/Host/RegisterTrap/MessageBuffer.h"
#include "Tools/boardsim/Host/RegisterTrap/RegisterBus.h"

namespace boardsim {

enum class Outcome {
    Done,     ///< the instruction has had its effect and the context stands behind it
    Crash,    ///< it is not allowed to access what it accesses
    Unknown,  ///< it is none of those that are emulated; nothing has happened
};

/// What knows the instructions of the processor that this program runs on; one implementation for each
/// architecture. The process has one, and the trap's lock guards it.
namespace Emulator {

/// Allocates what the others need. Call it once, outside signal handlers.
/// @return false when the disassembler cannot be opened
bool prepare() noexcept;

/// Carries out the load or store that `context` was interrupted at, on the bus, and updates the context's
/// registers and flags as the processor would have done. Of a repeated string instruction it does one element
/// and leaves the context at the same instruction until the count is used up. Async-signal-safe.
Outcome finish(ucontext_t& context, const RegisterBus& bus) noexcept;

/// Appends the text, bytes and address of the instruction that `context` was interrupted at.
void describe(const ucontext_t& context, MessageBuffer& message) noexcept;

}  // namespace Emulator

}  // namespace boardsim
