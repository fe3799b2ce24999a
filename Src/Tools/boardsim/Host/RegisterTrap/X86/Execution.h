#pragma once

#include <ucontext.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "Tools/boardsim/Host/RegisterTrap/RegisterBus.h"
#include "Tools/boardsim/Host/RegisterTrap/X86/Instruction.h"
#include "Tools/boardsim/Host/RegisterTrap/X86/Registers.h"
#include "Tools/boardsim/Host/RegisterTrap/X86/VectorRegisters.h"

namespace boardsim::X86 {

/// One instruction, carried out on an interrupted program's registers and on the bus.
/// A LOCK prefix needs nothing more: threads of this process queue at the trap, and no bus lock reaches a
/// device.
class Execution {
public:
    Execution(const Instruction& what, ucontext_t& context, const RegisterBus& where) noexcept
        : instruction_(what), registers_(context), vectors_(context), bus_(where) {}

    /// @return false when an access is not allowed; the instruction is then not finished
    bool run() noexcept;

private:
    using Step = bool (Execution::*)() noexcept;
    static const std::array<Step, 17> kSteps;  ///< by Form

    bool move() noexcept;
    bool moveSigned() noexcept;
    bool moveSwapped() noexcept;
    bool moveConditional() noexcept;
    bool setConditional() noexcept;
    bool arithmetic() noexcept;
    bool compare() noexcept;
    bool exchange() noexcept;
    bool exchangeAdd() noexcept;
    bool compareExchange() noexcept;
    bool vectorMove() noexcept;
    bool vexMove() noexcept;
    bool vectorLowHalf() noexcept;
    bool vectorHighHalf() noexcept;
    bool stringMove() noexcept;
    bool stringStore() noexcept;
    bool stringLoad() noexcept;

    bool vectorTransfer(std::size_t from, std::size_t clearUpTo) noexcept;
    bool stringElement() noexcept;

    const Operand& destination() const noexcept { return instruction_.operands[0]; }
    const Operand& source() const noexcept { return instruction_.operands[1]; }
    std::uintptr_t address(const Operand& operand) const noexcept;
    bool read(const Operand& operand, std::uint64_t& value) const noexcept;
    bool write(const Operand& operand, std::uint64_t value) noexcept;

    const Instruction& instruction_;
    Registers registers_;
    VectorRegisters vectors_;
    const RegisterBus& bus_;
};

}  // namespace boardsim::X86
