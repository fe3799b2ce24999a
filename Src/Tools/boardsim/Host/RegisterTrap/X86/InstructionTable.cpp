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

    {X86_INS_ADD, Form::Arithmetic, 0, add},
    {X86_INS_ADC, Form::Arithmetic, 0, addWithCarry},
    {X86_INS_SUB, Form::Arithmetic, 0, subtract},
    {X86_INS_SBB, Form::Arithmetic, 0, subtractWithBorrow},
    {X86_INS_INC, Form::Arithmetic, 0, increment},
    {X86_INS_DEC, Form::Arithmetic, 0, decrement},
    {X86_INS_NEG, Form::Arithmetic, 0, negate},
    {X86_INS_NOT, Form::Arithmetic, 0, invert},
    {X86_INS_AND, Form::Arithmetic, 0, bitAnd},
    {X86_INS_OR, Form::Arithmetic, 0, bitOr},
    {X86_INS_XOR, Form::Arithmetic, 0, bitXor},
    {X86_INS_SHL, Form::Arithmetic, 0, shiftLeft},
    {X86_INS_SHR, Form::Arithmetic, 0, shiftRight},
    {X86_INS_SAR, Form::Arithmetic, 0, shiftRightSigned},
    {X86_INS_IMUL, Form::Arithmetic, 0, multiply},
    {X86_INS_BTS, Form::Arithmetic, 0, setBit},
    {X86_INS_BTR, Form::Arithmetic, 0, resetBit},
    {X86_INS_BTC, Form::Arithmetic, 0, complementBit},
    {X86_INS_BT, Form::Compare, 0, testBit},
    {X86_INS_CMP, Form::Compare, 0, subtract},
    {X86_INS_TEST, Form::Compare, 0, bitAnd},

    {X86_INS_XCHG, Form::Exchange},
    {X86_INS_XADD, Form::ExchangeAdd},
    {X86_INS_CMPXCHG, Form::CompareExchange},

    {X86_INS_SETO, Form::SetConditional, 0},
    {X86_INS_SETNO, Form::SetConditional, 1},
    {X86_INS_SETB, Form::SetConditional, 2},
    {X86_INS_SETAE, Form::SetConditional, 3},
    {X86_INS_SETE, Form::SetConditional, 4},
    {X86_INS_SETNE, Form::SetConditional, 5},
    {X86_INS_SETBE, Form::SetConditional, 6},
    {X86_INS_SETA, Form::SetConditional, 7},
    {X86_INS_SETS, Form::SetConditional, 8},
    {X86_INS_SETNS, Form::SetConditional, 9},
    {X86_INS_SETP, Form::SetConditional, 10},
    {X86_INS_SETNP, Form::SetConditional, 11},
    {X86_INS_SETL, Form::SetConditional, 12},
    {X86_INS_SETGE, Form::SetConditional, 13},
    {X86_INS_SETLE, Form::SetConditional, 14},
    {X86_INS_SETG, Form::SetConditional, 15},
    {X86_INS_CMOVO, Form::MoveConditional, 0},
    {X86_INS_CMOVNO, Form::MoveConditional, 1},
    {X86_INS_CMOVB, Form::MoveConditional, 2},
    {X86_INS_CMOVAE, Form::MoveConditional, 3},
    {X86_INS_CMOVE, Form::MoveConditional, 4},
    {X86_INS_CMOVNE, Form::MoveConditional, 5},
    {X86_INS_CMOVBE, Form::MoveConditional, 6},
    {X86_INS_CMOVA, Form::MoveConditional, 7},
    {X86_INS_CMOVS, Form::MoveConditional, 8},
    {X86_INS_CMOVNS, Form::MoveConditional, 9},
    {X86_INS_CMOVP, Form::MoveConditional, 10},
    {X86_INS_CMOVNP, Form::MoveConditional, 11},
    {X86_INS_CMOVL, Form::MoveConditional, 12},
    {X86_INS_CMOVGE, Form::MoveConditional, 13},
    {X86_INS_CMOVLE, Form::MoveConditional, 14},
    {X86_INS_CMOVG, Form::MoveConditional, 15},

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
