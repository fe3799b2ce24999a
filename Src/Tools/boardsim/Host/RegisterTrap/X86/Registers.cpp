#include "Tools/boardsim/Host/RegisterTrap/X86/Registers.h"

namespace boardsim::X86 {

namespace {

constexpr int kPlaceInContext[] = {REG_RAX, REG_RCX, REG_RDX, REG_RBX, REG_RSP, REG_RBP, REG_RSI, REG_RDI,
                                   REG_R8,  REG_R9,  REG_R10, REG_R11, REG_R12, REG_R13, REG_R14, REG_R15};

constexpr std::uint64_t kHighByteMask = 0xFF00;

}  // namespace

std::uint64_t Registers::get(unsigned number) const noexcept {
    return static_cast<std::uint64_t>(values_[kPlaceInContext[number]]);
}

void Registers::set(unsigned number, unsigned width, std::uint64_t value) noexcept {
    if (width < 4) {
        const std::uint64_t mask = (std::uint64_t{1} << 8 * width) - 1;
        value = (get(number) & ~mask) | (value & mask);
    } else if (width == 4) {
        value = static_cast<std::uint32_t>(value);
    }
    values_[kPlaceInContext[number]] = static_cast<greg_t>(value);
}

std::uint8_t Registers::highByte(unsigned number) const noexcept {
    return static_cast<std::uint8_t>(get(number) >> 8U);
}

void Registers::setHighByte(unsigned number, std::uint8_t value) noexcept {
    const std::uint64_t placed = static_cast<std::uint64_t>(value) << 8U;
    set(number, 8, (get(number) & ~kHighByteMask) | placed);
}

std::uint64_t Registers::flags() const noexcept {
    return static_cast<std::uint64_t>(values_[REG_EFL]);
}

void Registers::setFlags(std::uint64_t flags) noexcept {
    values_[REG_EFL] = static_cast<greg_t>(flags);
}

std::uint64_t Registers::instructionPointer() const noexcept {
    return static_cast<std::uint64_t>(values_[REG_RIP]);
}

void Registers::advance(unsigned bytes) noexcept {
    values_[REG_RIP] += static_cast<greg_t>(bytes);
}

}  // namespace boardsim::X86
