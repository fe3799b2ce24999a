#include "Tools/boardsim/Host/RegisterTrap/X86/Decoder.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "Tools/boardsim/Host/RegisterTrap/X86/InstructionTable.h"

namespace boardsim::X86 {

namespace {

constexpr std::uint8_t kWideAddress = 8;
constexpr unsigned kVectorRegisters = 32;

/// The names of one register by width, in the order of the processor's numbers.
struct GeneralRegister {
    x86_reg names[4];
    static constexpr std::uint8_t widths[4] = {8, 4, 2, 1};
};
constexpr GeneralRegister kGeneralRegisters[] = {
    {{X86_REG_RAX, X86_REG_EAX, X86_REG_AX, X86_REG_AL}},
    {{X86_REG_RCX, X86_REG_ECX, X86_REG_CX, X86_REG_CL}},
    {{X86_REG_RDX, X86_REG_EDX, X86_REG_DX, X86_REG_DL}},
    {{X86_REG_RBX, X86_REG_EBX, X86_REG_BX, X86_REG_BL}},
    {{X86_REG_RSP, X86_REG_ESP, X86_REG_SP, X86_REG_SPL}},
    {{X86_REG_RBP, X86_REG_EBP, X86_REG_BP, X86_REG_BPL}},
    {{X86_REG_RSI, X86_REG_ESI, X86_REG_SI, X86_REG_SIL}},
    {{X86_REG_RDI, X86_REG_EDI, X86_REG_DI, X86_REG_DIL}},
    {{X86_REG_R8, X86_REG_R8D, X86_REG_R8W, X86_REG_R8B}},
    {{X86_REG_R9, X86_REG_R9D, X86_REG_R9W, X86_REG_R9B}},
    {{X86_REG_R10, X86_REG_R10D, X86_REG_R10W, X86_REG_R10B}},
    {{X86_REG_R11, X86_REG_R11D, X86_REG_R11W, X86_REG_R11B}},
    {{X86_REG_R12, X86_REG_R12D, X86_REG_R12W, X86_REG_R12B}},
    {{X86_REG_R13, X86_REG_R13D, X86_REG_R13W, X86_REG_R13B}},
    {{X86_REG_R14, X86_REG_R14D, X86_REG_R14W, X86_REG_R14B}},
    {{X86_REG_R15, X86_REG_R15D, X86_REG_R15W, X86_REG_R15B}},
};
constexpr x86_reg kHighBytes[] = {X86_REG_AH, X86_REG_CH, X86_REG_DH, X86_REG_BH};

bool toGeneralRegister(x86_reg name, Operand& operand) noexcept {
    for (std::size_t number = 0; number < std::size(kGeneralRegisters); ++number) {
        const auto& names = kGeneralRegisters[number].names;
        const auto* found = std::ranges::find(names, name);
        if (found == std::end(names)) {
            continue;
        }
        operand.number = static_cast<std::uint8_t>(number);
        operand.width = GeneralRegister::widths[found - names];
        return true;
    }
    const auto* high = std::ranges::find(kHighBytes, name);
    if (high == std::end(kHighBytes)) {
        return false;
    }
    operand.number = static_cast<std::uint8_t>(high - kHighBytes);
    operand.width = 1;
    operand.highByte = true;
    return true;
}

bool toVectorRegister(x86_reg name, Operand& operand) noexcept {
    for (const x86_reg first : {X86_REG_XMM0, X86_REG_YMM0, X86_REG_ZMM0}) {
        const unsigned number = static_cast<unsigned>(name) - static_cast<unsigned>(first);
        if (number < kVectorRegisters) {
            operand.kind = OperandKind::Vector;
            operand.number = static_cast<std::uint8_t>(number);
            return true;
        }
    }
    return false;
}

bool toAddressRegister(x86_reg name, std::int8_t& number) noexcept {
    if (name == X86_REG_INVALID) {
        return true;
    }
    Operand operand;
    if (!toGeneralRegister(name, operand) || operand.width != kWideAddress) {
        return false;
    }
    number = static_cast<std::int8_t>(operand.number);
    return true;
}

bool toMemory(const x86_op_mem& memory, std::uint64_t nextInstruction, Operand& operand) noexcept {
    // The bases of fs and gs are not in the signal frame.
    if (memory.segment == X86_REG_FS || memory.segment == X86_REG_GS) {
        return false;
    }
    operand.displacement = memory.disp;
    operand.scale = static_cast<std::uint8_t>(memory.scale);
    if (memory.base == X86_REG_RIP) {
        operand.displacement += static_cast<std::int64_t>(nextInstruction);
        return memory.index == X86_REG_INVALID;
    }
    return toAddressRegister(memory.base, operand.base) && toAddressRegister(memory.index, operand.index);
}

bool toOperand(const cs_x86_op& source, std::uint64_t nextInstruction, Operand& operand) noexcept {
    operand.width = source.size;
    switch (source.type) {
        case X86_OP_REG:
            operand.kind = OperandKind::General;
            return toGeneralRegister(source.reg, operand) || toVectorRegister(source.reg, operand);
        case X86_OP_IMM:
            operand.kind = OperandKind::Immediate;
            operand.immediate = static_cast<std::uint64_t>(source.imm);
            return true;
        case X86_OP_MEM:
            operand.kind = OperandKind::Memory;
            return toMemory(source.mem, nextInstruction, operand);
        default:
            return false;
    }
}

bool isMemory(const Operand& operand) noexcept {
    return operand.kind == OperandKind::Memory;
}

/// Forms that share their number with one that is emulated, but do something else.
bool isLookalike(const Instruction& instruction) noexcept {
    const auto& operands = instruction.operands;
    switch (instruction.operation->id) {
        case X86_INS_IMUL:  // the product goes to rdx:rax
            return instruction.operandCount == 1;
        case X86_INS_BT:  // the bit may lie far from the address
        case X86_INS_BTS:
        case X86_INS_BTR:
        case X86_INS_BTC:
            return operands[1].kind != OperandKind::Immediate;
        default:
            return false;
    }
}

bool isVectorForm(Form form) noexcept {
    return form >= Form::VectorMove && form <= Form::VectorHighHalf;
}

bool translate(const cs_insn& source, Instruction& result) noexcept {
    const cs_x86& details = source.detail->x86;
    result = {};
    result.operation = findOperation(source.id);
    if (!result.operation || details.addr_size != kWideAddress || details.op_count > result.operands.size()) {
        return false;
    }

    result.form = result.operation->form;
    result.length = static_cast<std::uint8_t>(source.size);
    result.operandCount = details.op_count;
    result.repeated = details.prefix[0] == X86_PREFIX_REP || details.prefix[0] == X86_PREFIX_REPNE;
    for (std::size_t i = 0; i < details.op_count; ++i) {
        if (!toOperand(details.operands[i], source.address + source.size, result.operands[i])) {
            return false;
        }
    }

    const auto operands = std::span(result.operands).first(result.operandCount);
    const auto memories = std::ranges::count_if(operands, isMemory);
    if (isVectorForm(result.form)) {
        if (memories == 2) {
            result.form = Form::StringMove;
        } else if (result.operandCount != 2) {  // masked, or merging a third register
            return false;
        }
    }
    return memories > 0 && !isLookalike(result);
}

}  // namespace

const Instruction* Decoder::decode(std::uint64_t address) noexcept {
    Entry& entry = cache_[(address ^ (address >> 8U)) % cache_.size()];
    const auto* code = reinterpret_cast<const std::uint8_t*>(address);
    const auto isUnchanged = [&] {
        return std::equal(code, code + entry.instruction.length, entry.code.begin());
    };
    if (entry.address == address && entry.instruction.length != 0 && isUnchanged()) {
        return &entry.instruction;
    }

    entry.address = 0;
    const cs_insn* found = disassembler_.decode(address);
    if (!found || !translate(*found, entry.instruction)) {
        return nullptr;
    }
    entry.address = address;
    std::copy_n(code, entry.instruction.length, entry.code.begin());
    return &entry.instruction;
}

}  // namespace boardsim::X86
