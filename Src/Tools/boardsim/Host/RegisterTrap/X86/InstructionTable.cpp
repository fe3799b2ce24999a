#include "Tools/boardsim/Host/RegisterTrap/X86/InstructionTable.h"

#include <capstone/capstone.h>

#include <algorithm>

#include "Tools/boardsim/Host/RegisterTrap/X86/Arithmetic.h"

namespace boardsim::X86 {

namespace {

constexpr Operation kOperations[] = {
    {X86_INS_MOV, Form::Move},
    {X86_INS_MOVABS, Form::Move},
    {X86_INS_MOVZX, Form::Move},
    {X86_INS_MOVNTI, Form::Move},
    {X86_INS_MOVSX, Form::MoveSigned},
    {X86_INS_MOVSXD, Form::MoveSigned},
    {X86_INS_MOVBE, Form::MoveSwapped},

    {X86_INS_ADD, Form::Arithmetic, add},
    {X86_INS_ADC, Form::Arithmetic, addWithCarry},
    {X86_INS_SUB, Form::Arithmetic, subtract},
    {X86_INS_SBB, Form::Arithmetic, subtractWithBorrow},
    {X86_INS_INC, Form::Arithmetic, increment},
    {X86_INS_DEC, Form::Arithmetic, decrement},
    {X86_INS_NEG, Form::Arithmetic, negate},
    {X86_INS_NOT, Form::Arithmetic, invert},
    {X86_INS_AND, Form::Arithmetic, bitAnd},
    {X86_INS_OR, Form::Arithmetic, bitOr},
    {X86_INS_XOR, Form::Arithmetic, bitXor},
    {X86_INS_SHL, Form::Arithmetic, shiftLeft},
    {X86_INS_SHR, Form::Arithmetic, shiftRight},
    {X86_INS_SAR, Form::Arithmetic, shiftRightSigned},
    {X86_INS_IMUL, Form::Arithmetic, multiply},
    {X86_INS_BTS, Form::Arithmetic, setBit},
    {X86_INS_BTR, Form::Arithmetic, resetBit},
    {X86_INS_BTC, Form::Arithmetic, complementBit},
    {X86_INS_BT, Form::Compare, testBit},
    {X86_INS_CMP, Form::Compare, subtract},
    {X86_INS_TEST, Form::Compare, bitAnd},

    {X86_INS_XCHG, Form::Exchange},
    {X86_INS_XADD, Form::ExchangeAdd},
    {X86_INS_CMPXCHG, Form::CompareExchange},

    {X86_INS_SETO, Form::SetConditional, nullptr, 0},
    {X86_INS_SETNO, Form::SetConditional, nullptr, 1},
    {X86_INS_SETB, Form::SetConditional, nullptr, 2},
    {X86_INS_SETAE, Form::SetConditional, nullptr, 3},
    {X86_INS_SETE, Form::SetConditional, nullptr, 4},
    {X86_INS_SETNE, Form::SetConditional, nullptr, 5},
    {X86_INS_SETBE, Form::SetConditional, nullptr, 6},
    {X86_INS_SETA, Form::SetConditional, nullptr, 7},
    {X86_INS_SETS, Form::SetConditional, nullptr, 8},
    {X86_INS_SETNS, Form::SetConditional, nullptr, 9},
    {X86_INS_SETP, Form::SetConditional, nullptr, 10},
    {X86_INS_SETNP, Form::SetConditional, nullptr, 11},
    {X86_INS_SETL, Form::SetConditional, nullptr, 12},
    {X86_INS_SETGE, Form::SetConditional, nullptr, 13},
    {X86_INS_SETLE, Form::SetConditional, nullptr, 14},
    {X86_INS_SETG, Form::SetConditional, nullptr, 15},
    {X86_INS_CMOVO, Form::MoveConditional, nullptr, 0},
    {X86_INS_CMOVNO, Form::MoveConditional, nullptr, 1},
    {X86_INS_CMOVB, Form::MoveConditional, nullptr, 2},
    {X86_INS_CMOVAE, Form::MoveConditional, nullptr, 3},
    {X86_INS_CMOVE, Form::MoveConditional, nullptr, 4},
    {X86_INS_CMOVNE, Form::MoveConditional, nullptr, 5},
    {X86_INS_CMOVBE, Form::MoveConditional, nullptr, 6},
    {X86_INS_CMOVA, Form::MoveConditional, nullptr, 7},
    {X86_INS_CMOVS, Form::MoveConditional, nullptr, 8},
    {X86_INS_CMOVNS, Form::MoveConditional, nullptr, 9},
    {X86_INS_CMOVP, Form::MoveConditional, nullptr, 10},
    {X86_INS_CMOVNP, Form::MoveConditional, nullptr, 11},
    {X86_INS_CMOVL, Form::MoveConditional, nullptr, 12},
    {X86_INS_CMOVGE, Form::MoveConditional, nullptr, 13},
    {X86_INS_CMOVLE, Form::MoveConditional, nullptr, 14},
    {X86_INS_CMOVG, Form::MoveConditional, nullptr, 15},

    {X86_INS_MOVD, Form::VectorMove},
    {X86_INS_MOVQ, Form::VectorMove},
    {X86_INS_MOVSS, Form::VectorMove},
    {X86_INS_MOVSD, Form::VectorMove},  // Capstone gives the string instruction the same number
    {X86_INS_MOVAPS, Form::VectorMove},
    {X86_INS_MOVAPD, Form::VectorMove},
    {X86_INS_MOVUPS, Form::VectorMove},
    {X86_INS_MOVUPD, Form::VectorMove},
    {X86_INS_MOVDQA, Form::VectorMove},
    {X86_INS_MOVDQU, Form::VectorMove},
    {X86_INS_LDDQU, Form::VectorMove},
    {X86_INS_MOVNTPS, Form::VectorMove},
    {X86_INS_MOVNTPD, Form::VectorMove},
    {X86_INS_MOVNTDQ, Form::VectorMove},
    {X86_INS_MOVNTDQA, Form::VectorMove},
    {X86_INS_MOVLPS, Form::VectorLowHalf},
    {X86_INS_MOVLPD, Form::VectorLowHalf},
    {X86_INS_MOVHPS, Form::VectorHighHalf},
    {X86_INS_MOVHPD, Form::VectorHighHalf},

    {X86_INS_VMOVD, Form::VexMove},
    {X86_INS_VMOVQ, Form::VexMove},
    {X86_INS_VMOVSS, Form::VexMove},
    {X86_INS_VMOVSD, Form::VexMove},
    {X86_INS_VMOVAPS, Form::VexMove},
    {X86_INS_VMOVAPD, Form::VexMove},
    {X86_INS_VMOVUPS, Form::VexMove},
    {X86_INS_VMOVUPD, Form::VexMove},
    {X86_INS_VMOVDQA, Form::VexMove},
    {X86_INS_VMOVDQA32, Form::VexMove},
    {X86_INS_VMOVDQA64, Form::VexMove},
    {X86_INS_VMOVDQU, Form::VexMove},
    {X86_INS_VMOVDQU8, Form::VexMove},
    {X86_INS_VMOVDQU16, Form::VexMove},
    {X86_INS_VMOVDQU32, Form::VexMove},
    {X86_INS_VMOVDQU64, Form::VexMove},
    {X86_INS_VLDDQU, Form::VexMove},
    {X86_INS_VMOVNTPS, Form::VexMove},
    {X86_INS_VMOVNTPD, Form::VexMove},
    {X86_INS_VMOVNTDQ, Form::VexMove},
    {X86_INS_VMOVNTDQA, Form::VexMove},

    {X86_INS_MOVSB, Form::StringMove},
    {X86_INS_MOVSW, Form::StringMove},
    {X86_INS_MOVSQ, Form::StringMove},
    {X86_INS_STOSB, Form::StringStore},
    {X86_INS_STOSW, Form::StringStore},
    {X86_INS_STOSD, Form::StringStore},
    {X86_INS_STOSQ, Form::StringStore},
    {X86_INS_LODSB, Form::StringLoad},
    {X86_INS_LODSW, Form::StringLoad},
    {X86_INS_LODSD, Form::StringLoad},
    {X86_INS_LODSQ, Form::StringLoad},
};

}  // namespace

const Operation* findOperation(unsigned id) noexcept {
    const auto* row = std::ranges::find(kOperations, id, &Operation::id);
    return row == std::end(kOperations) ? nullptr : row;
}

}  // namespace boardsim::X86
