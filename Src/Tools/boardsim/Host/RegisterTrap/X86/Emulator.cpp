#include "Tools/boardsim/Host/RegisterTrap/Emulator.h"

#include "Tools/boardsim/Host/RegisterTrap/X86/Decoder.h"
#include "Tools/boardsim/Host/RegisterTrap/X86/Execution.h"

namespace boardsim::Emulator {

namespace {

constinit X86::Decoder decoder;

std::uint64_t instructionPointer(const ucontext_t& context) noexcept {
    return static_cast<std::uint64_t>(context.uc_mcontext.gregs[REG_RIP]);
}

}  // namespace

bool prepare() noexcept {
    X86::VectorRegisters::findLayout();
    return decoder.open();
}

Outcome finish(ucontext_t& context, const RegisterBus& bus) noexcept {
    const X86::Instruction* instruction = decoder.decode(instructionPointer(context));
    if (!instruction) {
        return Outcome::Unknown;
    }
    return X86::Execution(*instruction, context, bus).run() ? Outcome::Done : Outcome::Crash;
}

void describe(const ucontext_t& context, MessageBuffer& message) noexcept {
    decoder.text().describe(instructionPointer(context), message);
}

}  // namespace boardsim::Emulator
