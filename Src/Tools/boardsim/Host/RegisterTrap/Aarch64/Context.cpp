#include "Tools/boardsim/Host/RegisterTrap/Aarch64/Context.h"

#include <asm/sigcontext.h>

#include <cstring>

namespace boardsim::Aarch64 {

namespace {

constexpr unsigned kZeroOrStackPointer = 31;
constexpr std::size_t kVectorSize = 16;
constexpr unsigned kInstructionSize = 4;

/// The signal frame ends in a list of records; one of them has the vector registers.
std::byte* findVectors(mcontext_t& machine) noexcept {
    auto* at = reinterpret_cast<std::byte*>(machine.__reserved);
    for (;;) {
        _aarch64_ctx record;
        std::memcpy(&record, at, sizeof record);
        if (record.magic == FPSIMD_MAGIC) {
            return at + offsetof(fpsimd_context, vregs);
        }
        if (record.magic == 0) {
            return nullptr;
        }
        at += record.size;
    }
}

}  // namespace

Context::Context(ucontext_t& context) noexcept
    : machine_(context.uc_mcontext), vectors_(findVectors(machine_)) {}

std::uint64_t Context::get(unsigned number) const noexcept {
    return number == kZeroOrStackPointer ? 0 : machine_.regs[number];
}

void Context::set(unsigned number, std::uint64_t value) noexcept {
    if (number != kZeroOrStackPointer) {
        machine_.regs[number] = value;
    }
}

std::uint64_t Context::address(unsigned number) const noexcept {
    return number == kZeroOrStackPointer ? machine_.sp : machine_.regs[number];
}

void Context::setAddress(unsigned number, std::uint64_t value) noexcept {
    (number == kZeroOrStackPointer ? machine_.sp : machine_.regs[number]) = value;
}

void Context::getVector(unsigned number, std::span<std::byte> data) const noexcept {
    std::memcpy(data.data(), vectors_ + number * kVectorSize, data.size());
}

void Context::setVector(unsigned number, std::span<const std::byte> data) noexcept {
    std::byte* vector = vectors_ + number * kVectorSize;
    std::memset(vector, 0, kVectorSize);
    std::memcpy(vector, data.data(), data.size());
}

void Context::advance() noexcept {
    machine_.pc += kInstructionSize;
}

}  // namespace boardsim::Aarch64
