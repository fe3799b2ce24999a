#include "Tools/boardsim/Host/RegisterTrap/Disassembler.h"

#include <algorithm>
#include <span>

namespace boardsim {

namespace {

#if defined(__x86_64__)
constexpr cs_arch kArchitecture = CS_ARCH_X86;
constexpr cs_mode kMode = CS_MODE_64;
constexpr std::size_t kLongestInstruction = 15;
constexpr std::uint8_t kSample[] = {0x8b, 0x07};  // mov eax, [rdi]
#elif defined(__aarch64__)
constexpr cs_arch kArchitecture = CS_ARCH_ARM64;
constexpr cs_mode kMode = CS_MODE_ARM;
constexpr std::size_t kLongestInstruction = 4;
constexpr std::uint8_t kSample[] = {0x00, 0x00, 0x40, 0xb9};  // ldr w0, [x0]
#else
#error "no disassembler for this processor"
#endif

constexpr std::size_t kSmallestPage = 4096;

}  // namespace

bool Disassembler::open() noexcept {
    if (instruction_) {
        return true;
    }
    if (cs_open(kArchitecture, kMode, &handle_) != CS_ERR_OK) {
        return false;
    }
    cs_option(handle_, CS_OPT_DETAIL, CS_OPT_ON);
    instruction_ = cs_malloc(handle_);
    // The first instruction makes Capstone allocate its index: have it done here, not in a signal handler.
    return instruction_ && decode(reinterpret_cast<std::uintptr_t>(kSample), sizeof kSample);
}

const cs_insn* Disassembler::decode(std::uintptr_t address) noexcept {
    // The next page need not be there, unless the instruction reaches into it.
    const std::size_t restOfPage = kSmallestPage - address % kSmallestPage;
    if (const cs_insn* found = decode(address, std::min(restOfPage, kLongestInstruction))) {
        return found;
    }
    return restOfPage < kLongestInstruction ? decode(address, kLongestInstruction) : nullptr;
}

const cs_insn* Disassembler::decode(std::uintptr_t address, std::size_t available) noexcept {
    const auto* code = reinterpret_cast<const std::uint8_t*>(address);
    std::uint64_t at = address;
    return cs_disasm_iter(handle_, &code, &available, &at, instruction_) ? instruction_ : nullptr;
}

void Disassembler::describe(std::uintptr_t address, MessageBuffer& message) noexcept {
    const cs_insn* found = decode(address);
    if (found) {
        message << "'" << found->mnemonic << " " << found->op_str << "' (";
        message.bytes(std::as_bytes(std::span(found->bytes, found->size)));
        message << ") at ";
    } else {
        message << "an unknown instruction at ";
    }
    message.hex(address);
}

}  // namespace boardsim
