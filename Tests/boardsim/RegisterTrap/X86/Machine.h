#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace registertrap {

/// What an instruction under test finds and leaves. rdi is the address it works on.
struct Machine {
    std::uint64_t rax = 0;
    std::uint64_t rcx = 0;
    std::uint64_t rdx = 0;
    std::uint64_t rsi = 0;
    std::uint64_t rdi = 0;
    std::uint64_t flags = 0;
    alignas(32) std::array<std::uint8_t, 32> vector{};  ///< xmm0 or ymm0
};

using Code = void (*)(Machine&);

/// A function that runs one instruction, or a few, on the processor: with the Machine's registers and flags,
/// and its vector loaded by `load` from (%r8) into register 0 and stored by `store`.
#define MACHINE_CODE(load, text, store)                                                            \
    [](registertrap::Machine& machine) {                                                           \
        std::uint64_t flags = machine.flags;                                                       \
        asm volatile("lea -256(%%rsp), %%rsp\n\t" load "\n\tpush %%rbx\n\tpopfq\n\t" text          \
                     "\n\tpushfq\n\tpop %%rbx\n\tcld\n\t" store "\n\tlea 256(%%rsp), %%rsp"        \
                     : "+a"(machine.rax), "+c"(machine.rcx), "+d"(machine.rdx), "+S"(machine.rsi), \
                       "+D"(machine.rdi), "+b"(flags)                                              \
                     : "r"(machine.vector.data())                                                  \
                     : "memory", "cc", "xmm0");                                                    \
        machine.flags = flags;                                                                     \
    }

/// With general registers only; with xmm0; with ymm0, for processors that have AVX.
#define CODE(text) MACHINE_CODE("", text, "")
#define SSE_CODE(text) MACHINE_CODE("movdqu (%6), %%xmm0", text, "movdqu %%xmm0, (%6)")
#define AVX_CODE(text) MACHINE_CODE("vmovdqu (%6), %%ymm0", text, "vmovdqu %%ymm0, (%6)")

}  // namespace registertrap
