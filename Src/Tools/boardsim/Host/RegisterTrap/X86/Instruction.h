#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace boardsim::X86 {

/// What an instruction does with its operands. The first operand is the destination.
enum class Form : std::uint8_t {
    Move,             ///< zero-extends
    MoveSigned,       ///< sign-extends
    MoveSwapped,      ///< reverses the bytes
    MoveConditional,  ///< reads in any case, moves when the condition holds
    SetConditional,   ///< 1 or 0
    Arithmetic,       ///< the last two operands' result goes to the first
    Compare,          ///< flags only
    Exchange,
    ExchangeAdd,
    CompareExchange,  ///< with the accumulator
    VectorMove,       ///< what is above 16 bytes stays as it is
    VexMove,          ///< what is above the width becomes zero
    VectorLowHalf,    ///< the other half stays as it is
    VectorHighHalf,
    StringMove,
    StringStore,
    StringLoad,
};

/// Result of an operation on two values of `width` bytes. `flags` is the flag register, changed as the
/// processor does. Bits above the width may be anything, in the values as in the result.
using Calculation = std::uint64_t (*)(std::uint64_t left, std::uint64_t right, unsigned width,
                                      std::uint64_t& flags);

/// One row of the instruction table.
struct Operation {
    unsigned id;  ///< Capstone's number
    Form form;
    std::uint8_t condition = 0;       ///< of the conditional forms, as the processor encodes it
    Calculation calculate = nullptr;  ///< of Arithmetic and Compare
};

enum class OperandKind : std::uint8_t { General, Vector, Immediate, Memory };

/// An operand as the instruction names it. A memory operand's address is
/// value(base) + value(index) * scale + displacement.
struct Operand {
    static constexpr std::int8_t kNoRegister = -1;

    OperandKind kind = OperandKind::Immediate;
    std::uint8_t width = 0;   ///< bytes
    std::uint8_t number = 0;  ///< of the register, as the processor encodes it
    bool highByte = false;    ///< ah, ch, dh, bh
    std::int8_t base = kNoRegister;
    std::int8_t index = kNoRegister;
    std::uint8_t scale = 1;
    std::int64_t displacement = 0;
    std::uint64_t immediate = 0;
};

/// A decoded instruction with a memory operand, with all that its emulation needs.
struct Instruction {
    const Operation* operation = nullptr;
    Form form = Form::Move;
    std::uint8_t length = 0;
    std::uint8_t operandCount = 0;
    bool repeated = false;
    std::array<Operand, 3> operands{};
};

}  // namespace boardsim::X86
