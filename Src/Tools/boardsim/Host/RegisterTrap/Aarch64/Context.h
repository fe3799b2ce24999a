#pragma once

#include <ucontext.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace boardsim::Aarch64 {

/// The registers of an interrupted program.
class Context {
public:
    explicit Context(ucontext_t& context) noexcept;

    /// Registers 0 to 30; 31 reads as zero and takes nothing.
    std::uint64_t get(unsigned number) const noexcept;
    void set(unsigned number, std::uint64_t value) noexcept;

    /// Registers 0 to 30 as an address; 31 is the stack pointer.
    std::uint64_t address(unsigned number) const noexcept;
    void setAddress(unsigned number, std::uint64_t value) noexcept;

    /// The low bytes of vector registers 0 to 31; setting clears the rest.
    void getVector(unsigned number, std::span<std::byte> data) const noexcept;
    void setVector(unsigned number, std::span<const std::byte> data) noexcept;
    bool hasVectors() const noexcept { return vectors_ != nullptr; }

    std::uint64_t programCounter() const noexcept { return machine_.pc; }
    void advance() noexcept;

private:
    mcontext_t& machine_;
    std::byte* vectors_;
};

}  // namespace boardsim::Aarch64
