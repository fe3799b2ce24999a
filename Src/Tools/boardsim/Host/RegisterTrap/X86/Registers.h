#pragma once

#include <ucontext.h>

#include <cstdint>

namespace boardsim::X86 {

/// The general registers and flags of an interrupted program. Register numbers are the processor's own:
/// 0 rax, 1 rcx, 2 rdx, 3 rbx, 4 rsp, 5 rbp, 6 rsi, 7 rdi, 8 to 15 r8 to r15.
class Registers {
public:
    static constexpr unsigned kAccumulator = 0;
    static constexpr unsigned kCounter = 1;

    explicit Registers(ucontext_t& context) noexcept : values_(context.uc_mcontext.gregs) {}

    std::uint64_t get(unsigned number) const noexcept;

    /// Sets the low `width` bytes: 4 clear the upper half, 1 and 2 leave the rest alone.
    void set(unsigned number, unsigned width, std::uint64_t value) noexcept;

    /// Bits 8 to 15 of registers 0 to 3.
    std::uint8_t highByte(unsigned number) const noexcept;
    void setHighByte(unsigned number, std::uint8_t value) noexcept;

    std::uint64_t flags() const noexcept;
    void setFlags(std::uint64_t flags) noexcept;

    std::uint64_t instructionPointer() const noexcept;
    void advance(unsigned bytes) noexcept;

private:
    greg_t* values_;
};

}  // namespace boardsim::X86
